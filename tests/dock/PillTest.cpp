#include "dock/Pill.h"

#include "chrome/BarWidget.h"
#include "chrome/WidgetDivider.h"
#include "dock/BarMetrics.h"
#include "harness/TestCase.h"
#include "theme/Theme.h"

#include <QGraphicsScene>
#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

class Block final : public BarWidget {
public:
    explicit Block(const QSizeF &size) { grow(size); }
    void grow(const QSizeF &size) { setNaturalSize(size); }
};

QList<qreal> dividers(const Pill &pill)
{
    QList<qreal> places;
    for (const QGraphicsItem *item : pill.childItems()) {
        const auto *divider = dynamic_cast<const WidgetDivider *>(item);
        if (divider && divider->isVisibleTo(&pill))
            places.append(divider->x());
    }
    return places;
}

struct Drop {
    explicit Drop(const QList<QUrl> &urls, Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction)
    {
        data.setUrls(urls);
        for (QGraphicsSceneDragDropEvent *event : {&enter, &drop}) {
            event->setMimeData(&data);
            event->setPossibleActions(possible);
            event->setProposedAction(Qt::MoveAction);
            event->setDropAction(Qt::MoveAction);
        }
    }

    QMimeData data;
    QGraphicsSceneDragDropEvent enter{QEvent::GraphicsSceneDragEnter};
    QGraphicsSceneDragDropEvent drop{QEvent::GraphicsSceneDrop};
};

} // namespace

class PillTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aLoneWidgetHasNoDivider()
    {
        Pill pill;
        auto *block = new Block({50, 30});
        pill.setRow({{WidgetKind::clock, block}});
        QCOMPARE(pill.size(), QSizeF(16 + 50 + 20, 72));
        QCOMPARE(block->pos(), QPointF(16, 21));
        QVERIFY(dividers(pill).isEmpty());
    }

    void aDividerStandsBetweenTwoWidgets()
    {
        Pill pill;
        auto *second = new Block({40, 72});
        pill.setRow({{WidgetKind::clock, new Block({50, 30})}, {WidgetKind::calendar, second}});
        QCOMPARE(dividers(pill), (QList<qreal>{16 + 50 + 14}));
        QCOMPARE(second->x(), 16.0 + 50 + 14 + 1 + 14);
        QCOMPARE(pill.size().width(), 16.0 + 50 + 29 + 40 + 20);
    }

    void anEmptyWidgetTakesNoPlace_data()
    {
        QTest::addColumn<int>("empty");
        QTest::newRow("first") << 0;
        QTest::newRow("in the middle") << 1;
        QTest::newRow("last") << 2;
    }
    void anEmptyWidgetTakesNoPlace()
    {
        QFETCH(const int, empty);
        Pill pill;
        QList<Block *> blocks;
        for (int i = 0; i < 3; ++i)
            blocks.append(new Block(i == empty ? QSizeF(0, 0) : QSizeF(50, 30)));
        pill.setRow({{WidgetKind::weather, blocks[0]}, {WidgetKind::clock, blocks[1]}, {WidgetKind::music, blocks[2]}});
        QCOMPARE(pill.size().width(), 16.0 + 50 + 29 + 50 + 20);
        QCOMPARE(dividers(pill), (QList<qreal>{16 + 50 + 14}));
        QVERIFY(!blocks[empty]->isVisibleTo(&pill));
        blocks[empty]->grow({50, 30});
        QVERIFY(blocks[empty]->isVisibleTo(&pill));
        QCOMPARE(pill.size().width(), 16.0 + 50 + 29 + 50 + 29 + 50 + 20);
        QCOMPARE(dividers(pill).size(), 2);
    }

    void anEmptyForecastLeavesNoGap()
    {
        Pill pill;
        auto *forecast = new Block({0, 0});
        pill.setRow({{WidgetKind::weather, new Block({50, 30})}, {WidgetKind::forecast, forecast}});
        QCOMPARE(pill.size().width(), 16.0 + 50 + 20);
        forecast->grow({40, 30});
        QCOMPARE(forecast->x(), 16.0 + 50 + 14);
        QCOMPARE(pill.size().width(), 16.0 + 50 + 14 + 40 + 20);
    }

    void theTwoWeatherWidgetsReadAsOne()
    {
        Pill pill;
        auto *forecast = new Block({40, 30});
        pill.setRow({{WidgetKind::weather, new Block({50, 30})}, {WidgetKind::forecast, forecast}});
        QVERIFY(dividers(pill).isEmpty());
        QCOMPARE(forecast->x(), 16.0 + 50 + 14);
    }

    void theForecastBeforeTheWeatherIsDividedAsUsual()
    {
        Pill pill;
        pill.setRow({{WidgetKind::forecast, new Block({50, 30})}, {WidgetKind::weather, new Block({50, 30})}});
        QCOMPARE(dividers(pill).size(), 1);
    }

    void growsWithAWidgetAndSaysSo()
    {
        Pill pill;
        auto *block = new Block({50, 30});
        pill.setRow({{WidgetKind::clock, block}});
        QSignalSpy changed(&pill, &Pill::widthChanged);
        block->grow({60.2, 30});
        QCOMPARE(pill.size().width(), 16.0 + 61 + 20);
        QCOMPARE(changed.size(), 1);
        block->grow({60.4, 30});
        QCOMPARE(changed.size(), 1);
    }

    void anEmptyRowIsJustPadding()
    {
        Pill pill;
        pill.setRow({{WidgetKind::clock, new Block({50, 30})}});
        pill.setRow({});
        QCOMPARE(pill.size(), QSizeF(36, 72));
    }

    void isFilledAndOutlinedInTheColoursOfTheTheme()
    {
        QGraphicsScene scene;
        auto *pill = new Pill;
        scene.addItem(pill);
        pill->setRow({{WidgetKind::clock, new Block({200, 30})}});
        pill->setRoom(QRectF(-100, -100, 500, 300));
        QImage image(pill->size().toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        scene.render(&painter, QRectF(image.rect()), QRectF(image.rect()));
        painter.end();
        // Nine tenths of #141416 over what shines through, which is white darkened by the shadow.
        const QColor inside = image.pixelColor(118, 36);
        QVERIFY(inside.red() >= 0x12 && inside.red() <= 0x2c);
        QCOMPARE(qAbs(inside.blue() - inside.red()), 2);
        QVERIFY(image.pixelColor(118, 0).red() > inside.red());
        QVERIFY(image.pixelColor(118, 0).red() > image.pixelColor(118, 1).red() + 10);
        QVERIFY(image.pixelColor(0, 0).red() > 0xe0);
    }

    void droppedFilesAreHandedOnAndNeverMoved()
    {
        QGraphicsScene scene;
        auto *pill = new Pill;
        scene.addItem(pill);
        QSignalSpy dropped(pill, &Pill::filesDropped);
        const QUrl file = QUrl::fromLocalFile(QStringLiteral("/tmp/a"));
        Drop drop({file, QUrl(QStringLiteral("https://example.org"))});
        scene.sendEvent(pill, &drop.enter);
        QVERIFY(drop.enter.isAccepted());
        scene.sendEvent(pill, &drop.drop);
        QCOMPARE(dropped.size(), 1);
        QCOMPARE(dropped.first().first().value<QList<QUrl>>(), QList<QUrl>{file});
        QCOMPARE(drop.drop.dropAction(), Qt::CopyAction);
    }

    void aDropWithoutFilesIsRefused()
    {
        QGraphicsScene scene;
        auto *pill = new Pill;
        scene.addItem(pill);
        QSignalSpy dropped(pill, &Pill::filesDropped);
        Drop drop({QUrl(QStringLiteral("https://example.org"))});
        scene.sendEvent(pill, &drop.enter);
        QVERIFY(!drop.enter.isAccepted());
        scene.sendEvent(pill, &drop.drop);
        QCOMPARE(dropped.size(), 0);
    }
};

MOORLINE_TEST(PillTest);

#include "PillTest.moc"
