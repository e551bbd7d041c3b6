#include "FilesFixture.h"
#include "chrome/ReorderDrag.h"
#include "files/PinnedItemButton.h"
#include "files/PinnedItemsWidget.h"
#include "harness/TestCase.h"

#include <QApplication>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// Three items at 20, 72 and 124 with the Trash behind them at 176, and a pointer that carries the item that stands at
/// a place.
struct Fixture : FilesFixture {
    Fixture()
    {
        QApplication::setStartDragDistance(10);
        pin({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
        store.change([](Settings &settings) { settings.showTrash = true; });
        row = new PinnedItemsWidget(context());
        row->setPos(20, 20);
        row->setStage(&stage);
        hand.scene.addItem(row);
    }

    void drag(const QPoint &from, const std::function<void()> &onDrag)
    {
        PinnedItemButton *button = row->buttons().value((from.x() - 20) / 52);
        const auto connection = QObject::connect(button, &BarItem::draggedChanged, button, [button, onDrag] {
            if (button->isDragged())
                onDrag();
        });
        hand.press(from);
        hand.move(from + QPoint(12, 0));
        QObject::disconnect(connection);
    }
    [[nodiscard]] Qt::DropAction carryTo(const QPoint &place, const QString &name)
    {
        const ReorderPayload payload(item(name).path);
        return hand.dragOver(place, payload, Qt::MoveAction);
    }
    void letGoAt(const QPointF &screenPlace)
    {
        platform.pointer.place = screenPlace;
        platform.pointer.buttons = Qt::NoButton;
        platform.clock.advance(80ms);
    }
    [[nodiscard]] QString names() const
    {
        QStringList shown;
        for (const PinnedItemButton *button : row->buttons())
            shown.append(button->item().name);
        return shown.join(u' ');
    }

    PinnedItemsWidget *row = nullptr;
};

constexpr QPoint first(40, 40);
constexpr QPoint second(92, 40);
constexpr QPoint third(144, 40);
constexpr QPoint overTheTrash(196, 40);
/// Of the screen, whose panel is 98 points high.
constexpr QPointF onTheBar(700, 50);

} // namespace

class PinnedItemDragTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void carriedOverAnotherItTakesItsPlace_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QString>("order");
        QTest::newRow("first over the third") << first << third << QStringLiteral("2 3 1");
        QTest::newRow("third over the first") << third << first << QStringLiteral("3 1 2");
        QTest::newRow("second over the first") << second << first << QStringLiteral("2 1 3");
        QTest::newRow("over the Trash, which stays the last") << first << overTheTrash << QStringLiteral("2 3 1");
    }

    void carriedOverAnotherItTakesItsPlace()
    {
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(QString, order);
        Fixture fixture;
        const QString carried = QString::number((from.x() - 20) / 52 + 1);
        fixture.drag(from, [&] {
            QCOMPARE(fixture.carryTo(to, carried), Qt::MoveAction);
            QCOMPARE(fixture.names(), order);
            QCOMPARE(fixture.pinned(), order);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.names(), order);
        QCOMPARE(fixture.pinned(), order);
    }

    void letGoFarFromTheBarItIsRemoved_data()
    {
        QTest::addColumn<QPointF>("place");
        QTest::addColumn<QString>("left");
        QTest::newRow("inside the panel") << onTheBar << QStringLiteral("1 2 3");
        QTest::newRow("50 points below it") << QPointF(700, -50) << QStringLiteral("1 2 3");
        QTest::newRow("70 points below it") << QPointF(700, -70) << QStringLiteral("2 3");
        QTest::newRow("70 points above it") << QPointF(700, 168) << QStringLiteral("2 3");
    }

    void letGoFarFromTheBarItIsRemoved()
    {
        QFETCH(QPointF, place);
        QFETCH(QString, left);
        Fixture fixture;
        fixture.drag(first, [] {});
        fixture.letGoAt(place);
        QCOMPARE(fixture.pinned(), left);
        QCOMPARE(fixture.names(), left);
        QVERIFY(fixture.platform.workspace.openedFiles.isEmpty());
        QVERIFY(fixture.platform.files.trashings.isEmpty());
    }

    void cancelledItIsWhereItWasWhereverTheButtonIsLetGo()
    {
        Fixture fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(third, QStringLiteral("1")), Qt::MoveAction);
            QCOMPARE(fixture.pinned(), QStringLiteral("2 3 1"));
            fixture.platform.popupWindows.pressEscape();
        });
        fixture.letGoAt({700, 400});
        QCOMPARE(fixture.names(), QStringLiteral("1 2 3"));
        QCOMPARE(fixture.pinned(), QStringLiteral("1 2 3"));
    }

    void carriedItIsFaint()
    {
        Fixture fixture;
        fixture.drag(first, [&] {
            fixture.platform.clock.advance(1s);
            QCOMPARE(fixture.row->buttons().first()->iconOpacity(), 0.35);
        });
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.row->buttons().first()->iconOpacity(), 1.0);
    }
};

MOORLINE_TEST(PinnedItemDragTest);
#include "PinnedItemDragTest.moc"
