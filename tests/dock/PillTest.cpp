#include "dock/Pill.h"

#include "chrome/BarWidget.h"
#include "chrome/WidgetDivider.h"
#include "dock/BarMetrics.h"
#include "fakes/FakeDropTransfer.h"
#include "harness/TestCase.h"
#include "theme/Shadow.h"
#include "theme/Shapes.h"
#include "theme/Theme.h"

#include <QGraphicsScene>
#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QSignalSpy>
#include <functional>

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

/// As wide as its icons, which stand 6 points apart.
class Icons final : public BarWidget {
public:
    explicit Icons(int count)
        : m_count(count)
    {
    }
    void setIconSize(qreal size) override { setNaturalSize({m_count * size + (m_count - 1) * 6, size}); }

private:
    int m_count;
};

/// Files whose source takes its time to answer.
class SlowFiles final : public QMimeData {
public:
    [[nodiscard]] QStringList formats() const override { return {QStringLiteral("text/uri-list")}; }

    mutable int timesAsked = 0;

protected:
    [[nodiscard]] QVariant retrieveData(const QString &, QMetaType) const override
    {
        ++timesAsked;
        return QVariantList{QUrl::fromLocalFile(QStringLiteral("/tmp/a"))};
    }
};

void deleteWhatWaits()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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
        scene.sendEvent(pill, &drop.drop);
        QVERIFY(!drop.drop.isAccepted());
        QCOMPARE(dropped.size(), 0);
    }

    void whatArrivesLaterIsHandedOnThen()
    {
        QGraphicsScene scene;
        auto *pill = new Pill;
        scene.addItem(pill);
        QSignalSpy dropped(pill, &Pill::filesDropped);
        LetGo letGo;
        const auto transfer = std::make_shared<FakeDropTransfer>(letGo);
        const ArrivingDrop arriving({QStringLiteral("text/uri-list")}, transfer);
        Drop drop({});
        drop.drop.setMimeData(&arriving);
        scene.sendEvent(pill, &drop.drop);
        QVERIFY(drop.drop.isAccepted());
        QCOMPARE(dropped.size(), 0);
        transfer->arrive("https://example.org\r\nfile:///tmp/caf%E9\r\n");
        QCOMPARE(dropped.size(), 1);
        QCOMPARE(dropped.first().first().value<QList<QUrl>>(), QList{QUrl::fromEncoded("file:///tmp/caf%E9")});
        QCOMPARE(letGo.answers, QList{Qt::CopyAction});
    }

    void whatArrivesWithoutFilesIsNotTaken()
    {
        QGraphicsScene scene;
        auto *pill = new Pill;
        scene.addItem(pill);
        QSignalSpy dropped(pill, &Pill::filesDropped);
        LetGo letGo;
        const auto transfer = std::make_shared<FakeDropTransfer>(letGo);
        const ArrivingDrop arriving({QStringLiteral("text/uri-list")}, transfer);
        Drop drop({});
        drop.drop.setMimeData(&arriving);
        scene.sendEvent(pill, &drop.drop);
        transfer->arrive("https://example.org\r\n");
        QCOMPARE(dropped.size(), 0);
        QCOMPARE(letGo.answers, QList{Qt::IgnoreAction});
    }

    void whatCannotHoldFilesIsRefusedAtOnce_data()
    {
        QTest::addColumn<QString>("format");
        QTest::newRow("text") << QStringLiteral("text/plain");
        QTest::newRow("what the target saves itself") << QStringLiteral("XdndDirectSave0");
        QTest::newRow("addresses with titles") << QStringLiteral("text/x-moz-url");
    }

    void whatCannotHoldFilesIsRefusedAtOnce()
    {
        QFETCH(QString, format);
        QGraphicsScene scene;
        auto *pill = new Pill;
        scene.addItem(pill);
        Drop drop({});
        drop.data.clear();
        drop.data.setData(format, "file:///tmp/a");
        scene.sendEvent(pill, &drop.enter);
        QVERIFY(!drop.enter.isAccepted());
        QVERIFY(!pill->isDropHovered());
    }

    void theSourceIsAskedOnceOnTheDrop()
    {
        QGraphicsScene scene;
        auto *pill = new Pill;
        scene.addItem(pill);
        QSignalSpy dropped(pill, &Pill::filesDropped);
        const SlowFiles files;
        Drop drop({});
        drop.enter.setMimeData(&files);
        drop.drop.setMimeData(&files);
        for (int i = 0; i < 3; ++i) {
            scene.sendEvent(pill, &drop.enter);
            QVERIFY(drop.enter.isAccepted());
        }
        QCOMPARE(files.timesAsked, 0);
        scene.sendEvent(pill, &drop.drop);
        QCOMPARE(dropped.size(), 1);
        QCOMPARE(files.timesAsked, 1);
    }

    void theOutlineTellsThatADropWouldBeTaken()
    {
        QGraphicsScene scene;
        auto *pill = new Pill;
        scene.addItem(pill);
        pill->setRow({{WidgetKind::clock, new Block({200, 30})}});
        pill->setDropColor(Qt::green);
        const auto outline = [&scene, pill] {
            QImage image(pill->size().toSize(), QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::black);
            QPainter painter(&image);
            scene.render(&painter, QRectF(image.rect()), QRectF(image.rect()));
            painter.end();
            return image.pixelColor(118, 0);
        };
        Drop drop({QUrl::fromLocalFile(QStringLiteral("/tmp/a"))});
        scene.sendEvent(pill, &drop.enter);
        QVERIFY(outline().green() > outline().red() + 100);
        QGraphicsSceneDragDropEvent leave(QEvent::GraphicsSceneDragLeave);
        scene.sendEvent(pill, &leave);
        QVERIFY(outline().green() < outline().red() + 10);
    }

    void looksAsItIsMeasured()
    {
        Pill pill;
        pill.setRow({{WidgetKind::clock, new Block({200, 30})}});
        const QRectF room(-60, -40, 356, 160);
        pill.setRoom(room);
        const auto picture = [&room](const std::function<void(QPainter &)> &draw) {
            QImage image(room.size().toSize() * 2, QImage::Format_ARGB32_Premultiplied);
            image.setDevicePixelRatio(2);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.translate(-room.topLeft());
            draw(painter);
            painter.end();
            return image;
        };
        const QImage painted = picture([&pill](QPainter &painter) { pill.paint(&painter, nullptr, nullptr); });
        const QImage expected = picture([&room](QPainter &painter) {
            const QPainterPath outline = continuousRoundedRect({0, 0, 236, 72}, 19);
            Shadow(QColor::fromRgbF(0, 0, 0, 0.55F), 22, {0, 14}).paint(painter, outline, room);
            painter.fillPath(outline, Theme::pillFill);
            painter.strokePath(continuousRoundedRect({0.5, 0.5, 235, 71}, 18.5), QPen(Theme::pillStroke, 1));
        });
        QCOMPARE(painted, expected);
        QCOMPARE(pill.outline(), continuousRoundedRect({0, 0, 236, 72}, 19));
    }

    void aWidgetThatStaysIsTheSame()
    {
        Pill pill;
        QPointer<Block> first = new Block({50, 30});
        QPointer<Block> second = new Block({40, 30});
        pill.setRow({{WidgetKind::clock, first}, {WidgetKind::calendar, second}});
        pill.setRow({{WidgetKind::calendar, second}, {WidgetKind::clock, first}});
        QCOMPARE(second->x(), 16.0);
        QCOMPARE(first->x(), 16.0 + 40 + 29);
        deleteWhatWaits();
        QVERIFY(first && second);
    }

    void aWidgetThatLeavesIsHiddenAtOnceAndDeletedLater()
    {
        Pill pill;
        QPointer<Block> first = new Block({50, 30});
        QPointer<Block> second = new Block({40, 30});
        pill.setRow({{WidgetKind::clock, first}, {WidgetKind::calendar, second}});
        pill.setRow({{WidgetKind::calendar, second}});
        QVERIFY(first);
        QVERIFY(!first->isVisible());
        QCOMPARE(second->x(), 16.0);
        QVERIFY(dividers(pill).isEmpty());
        QSignalSpy changed(&pill, &Pill::widthChanged);
        first->grow({500, 30});
        QCOMPARE(changed.size(), 0);
        QVERIFY(!first->isVisible());
        deleteWhatWaits();
        QVERIFY(!first);
        QVERIFY(second);
    }

    void aThousandRowsLeaveNothingBehind()
    {
        Pill pill;
        auto *first = new Block({50, 30});
        for (int i = 0; i < 1000; ++i) {
            pill.setRow({{WidgetKind::clock, first}, {WidgetKind::calendar, new Block({40, 30})}});
            deleteWhatWaits();
        }
        QCOMPARE(pill.childItems().size(), 3);
    }

    void anIconSizeForThreeWidgetsIsOneLayout()
    {
        Pill pill;
        auto *last = new Block({40, 30});
        pill.setRow({{WidgetKind::appShortcut, new Icons(5)}, {WidgetKind::recentApps, new Icons(3)},
            {WidgetKind::pinnedItems, new Icons(2)}, {WidgetKind::clock, last}});
        QCOMPARE(pill.size().width(), 16 + (5 * 46 + 24) + 29 + (3 * 46 + 12) + 29 + (2 * 46 + 6.0) + 29 + 40 + 20);
        QSignalSpy widths(&pill, &Pill::widthChanged);
        QSignalSpy layouts(last, &QGraphicsObject::xChanged);
        pill.setIconSize(30);
        QCOMPARE(widths.size(), 1);
        QCOMPARE(layouts.size(), 1);
        QCOMPARE(pill.size().width(), 16 + (5 * 30 + 24) + 29 + (3 * 30 + 12) + 29 + (2 * 30 + 6.0) + 29 + 40 + 20);
    }

    void aWidgetThatComesLaterHasTheSameIconSize()
    {
        Pill pill;
        pill.setIconSize(30);
        auto *icons = new Icons(2);
        pill.setRow({{WidgetKind::pinnedItems, icons}});
        QCOMPARE(icons->size().width(), 2 * 30 + 6.0);
    }
};

MOORLINE_TEST(PillTest);

#include "PillTest.moc"
