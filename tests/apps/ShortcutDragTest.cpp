#include "apps/AppShortcutsWidget.h"

#include "IconsFixture.h"
#include "chrome/ReorderDrag.h"
#include "harness/TestCase.h"

#include <QApplication>
#include <QDrag>
#include <QPixmap>
#include <QPointer>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// Three icons at 20, 72 and 124, and a pointer that carries the first of them.
struct Fixture : IconsFixture {
    Fixture()
    {
        QApplication::setStartDragDistance(10);
        pin({notes, finder, mail});
        row = new AppShortcutsWidget(context());
        row->setPos(20, 20);
        row->setStage(&stage);
        hand.scene.addItem(row);
        written.clear();
    }

    /// One that is 300 points wide and 100 high.
    void putIntoABar()
    {
        auto *bar = new QGraphicsWidget;
        bar->resize(300, 100);
        hand.scene.addItem(bar);
        row->setParentItem(bar);
    }

    /// Drags the icon that stands there. While it is dragged, `onDrag` is called.
    void drag(const QPoint &from, const std::function<void()> &onDrag)
    {
        AppShortcutButton *button = row->buttons().value((from.x() - 20) / 52);
        const auto connection = QObject::connect(button, &BarItem::draggedChanged, button, [button, onDrag] {
            if (button->isDragged())
                onDrag();
        });
        hand.press(from);
        hand.move(from + QPoint(12, 0));
        QObject::disconnect(connection);
    }

    [[nodiscard]] Qt::DropAction carryTo(const QPoint &place, const AppShortcut &shortcut)
    {
        const ReorderPayload payload(shortcut.id());
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
        for (const AppShortcutButton *button : row->buttons())
            shown.append(button->shortcut().name);
        return shown.join(u' ');
    }
    [[nodiscard]] QString storedNames() const
    {
        QStringList stored;
        for (const AppShortcut &shortcut : store.settings().appShortcuts)
            stored.append(shortcut.name);
        return stored.join(u' ');
    }

    Hand hand;
    AppShortcutsWidget *row = nullptr;
    QSignalSpy written{&store, &SettingsStore::settingsDidChange};
};

constexpr QPoint first(40, 40);
constexpr QPoint second(92, 40);
constexpr QPoint third(144, 40);
/// Of the screen, whose panel is 98 points high.
constexpr QPointF onTheBar(700, 50);
constexpr QPointF offTheBar(700, 159);

} // namespace

class ShortcutDragTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void carriedOverAnotherItTakesItsPlace_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QString>("order");
        QTest::newRow("first over the third") << first << third << QStringLiteral("Finder Mail Notes");
        QTest::newRow("third over the first") << third << first << QStringLiteral("Mail Notes Finder");
        QTest::newRow("first over the second") << first << second << QStringLiteral("Finder Notes Mail");
        QTest::newRow("second over the first") << second << first << QStringLiteral("Finder Notes Mail");
        QTest::newRow("over itself") << second << second << QStringLiteral("Notes Finder Mail");
        QTest::newRow("above an icon") << first << QPoint(144, 2) << QStringLiteral("Finder Mail Notes");
        QTest::newRow("below an icon") << first << QPoint(144, 90) << QStringLiteral("Finder Mail Notes");
    }

    void carriedOverAnotherItTakesItsPlace()
    {
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(QString, order);
        Fixture fixture;
        const AppShortcut carried = fixture.row->buttons()[(from.x() - 20) / 52]->shortcut();
        fixture.drag(from, [&] {
            QCOMPARE(fixture.carryTo(to, carried), Qt::MoveAction);
            QCOMPARE(fixture.names(), order);
            QCOMPARE(fixture.storedNames(), QStringLiteral("Notes Finder Mail"));
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.names(), order);
        QCOMPARE(fixture.storedNames(), order);
    }

    void theOrderIsWrittenOnce()
    {
        Fixture fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::MoveAction);
        });
        QCOMPARE(fixture.written.size(), 0);
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Notes Mail"));
        QCOMPARE(fixture.written.size(), 1);
    }

    void anOrderThatIsTheSameIsNotWritten()
    {
        Fixture fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.carryTo(first, fixture.notes), Qt::MoveAction);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.written.size(), 0);
    }

    void betweenTwoIconsNothingMoves()
    {
        Fixture fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo({69, 40}, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
            QCOMPARE(fixture.carryTo({72, 40}, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.names(), QStringLiteral("Finder Notes Mail"));
        });
        fixture.letGoAt(onTheBar);
    }

    void aQuickPointerCarriesItAllTheWay_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QString>("order");
        QTest::newRow("beyond the right end") << first << QPoint(171, 40) << QStringLiteral("Finder Mail Notes");
        QTest::newRow("far beyond it") << second << QPoint(290, 90) << QStringLiteral("Notes Mail Finder");
        QTest::newRow("beyond the left end") << third << QPoint(19, 40) << QStringLiteral("Mail Notes Finder");
        QTest::newRow("far beyond it, there") << second << QPoint(2, 5) << QStringLiteral("Finder Notes Mail");
        QTest::newRow("the last one beyond its end") << third << QPoint(290, 40) << QStringLiteral("Notes Finder Mail");
        QTest::newRow("between the others, from the left")
            << first << QPoint(120, 40) << QStringLiteral("Finder Notes Mail");
        QTest::newRow("between the others, from the right")
            << third << QPoint(69, 40) << QStringLiteral("Notes Mail Finder");
    }

    void aQuickPointerCarriesItAllTheWay()
    {
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(QString, order);
        Fixture fixture;
        fixture.putIntoABar();
        const AppShortcut carried = fixture.row->buttons()[(from.x() - 20) / 52]->shortcut();
        fixture.drag(from, [&] {
            QCOMPARE(fixture.carryTo(to, carried), Qt::MoveAction);
            QCOMPARE(fixture.names(), order);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.storedNames(), order);
    }

    void theRowIsAsLargeAsTheBarOnlyWhileAnIconIsCarried_data()
    {
        QTest::addColumn<bool>("isCancelled");
        QTest::newRow("let go") << false;
        QTest::newRow("cancelled") << true;
    }

    void theRowIsAsLargeAsTheBarOnlyWhileAnIconIsCarried()
    {
        QFETCH(bool, isCancelled);
        Fixture fixture;
        fixture.putIntoABar();
        const QRectF rest = fixture.row->boundingRect();
        QCOMPARE(rest, QRectF(0, -24, 150, 100));
        fixture.drag(first, [&] {
            QCOMPARE(fixture.row->boundingRect(), QRectF(-20, -24, 300, 104));
            if (isCancelled)
                fixture.platform.popupWindows.pressEscape();
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.row->boundingRect(), rest);
    }

    void buttonsSlideToTheirPlaces()
    {
        Fixture fixture;
        const auto before = fixture.row->buttons();
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction);
            QCOMPARE(before[0]->x(), 0.0);
            fixture.platform.clock.advance(16ms);
            const Spring spring{.response = 0.3, .damping = 0.75};
            QVERIFY(std::abs(before[0]->x() - 104 * spring.valueAt(0.016)) < 1e-6);
            QVERIFY(std::abs(before[1]->x() - (52 - 52 * spring.valueAt(0.016))) < 1e-6);
            fixture.platform.clock.advance(1s);
            QCOMPARE(before[0]->x(), 104.0);
            QCOMPARE(before[1]->x(), 0.0);
            QCOMPARE(before[2]->x(), 52.0);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.row->buttons(), (QList{before[1], before[2], before[0]}));
        QCOMPARE(before[0]->x(), 104.0);
    }

    void whatSlidesGoesOnWhenTheOrderIsWritten()
    {
        Fixture fixture;
        AppShortcutButton *carried = fixture.row->buttons().first();
        fixture.drag(first, [&] { QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::MoveAction); });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.written.size(), 1);
        QVERIFY(carried->x() > 0 && carried->x() < 52);
        fixture.platform.clock.advance(1s);
        QCOMPARE(carried->x(), 52.0);
    }

    void letGoOffTheBarItIsRemoved_data()
    {
        QTest::addColumn<QPointF>("place");
        QTest::addColumn<QString>("left");
        QTest::newRow("60 points off") << QPointF(700, 158) << QStringLiteral("Notes Finder Mail");
        QTest::newRow("61 points off") << QPointF(700, 159) << QStringLiteral("Finder Mail");
        QTest::newRow("on another screen") << QPointF(-3000, 50) << QStringLiteral("Finder Mail");
    }

    void letGoOffTheBarItIsRemoved()
    {
        QFETCH(QPointF, place);
        QFETCH(QString, left);
        Fixture fixture;
        fixture.drag(first, [] {});
        QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
        fixture.letGoAt(place);
        QCOMPARE(fixture.storedNames(), left);
        QCOMPARE(fixture.names(), left);
        QCOMPARE(fixture.platform.workspace.openings.size(), 0);
    }

    void carriedOverOthersAndOffTheBarItLeavesThemAsTheyWere()
    {
        Fixture fixture;
        fixture.drag(first, [&] { QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction); });
        fixture.letGoAt(offTheBar);
        QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Mail"));
        QCOMPARE(fixture.names(), QStringLiteral("Finder Mail"));
        QCOMPARE(fixture.written.size(), 1);
    }

    void cancelledItIsWhereItWasWhereverTheButtonIsLetGo_data()
    {
        QTest::addColumn<QPointF>("place");
        QTest::newRow("on the bar") << onTheBar;
        QTest::newRow("off the bar") << offTheBar;
    }

    void cancelledItIsWhereItWasWhereverTheButtonIsLetGo()
    {
        QFETCH(QPointF, place);
        Fixture fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction);
            fixture.platform.clock.advance(1s);
            fixture.platform.popupWindows.pressEscape();
        });
        QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
        fixture.letGoAt(place);
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
        QCOMPARE(fixture.written.size(), 0);
        for (qsizetype i = 0; i < 3; ++i)
            QCOMPARE(fixture.row->buttons()[i]->x(), qreal(i) * 52);
    }

    void wherePlaceIsKnownBeforeTheEndItIsTheEndThatCounts_data()
    {
        QTest::addColumn<bool>("isCancelled");
        QTest::addColumn<QString>("left");
        QTest::newRow("let go") << false << QStringLiteral("Finder Mail");
        QTest::newRow("cancelled") << true << QStringLiteral("Notes Finder Mail");
    }

    void wherePlaceIsKnownBeforeTheEndItIsTheEndThatCounts();
    void cancelledItIsNotLookedAfterAnyMore();

    void carriedItIsFaint()
    {
        Fixture fixture;
        QPointer<AppShortcutButton> carried = fixture.row->buttons().first();
        fixture.drag(first, [&] {
            fixture.platform.clock.advance(1s);
            QCOMPARE(carried->iconOpacity(), 0.35);
        });
        fixture.platform.clock.advance(16ms);
        const double slightly = 0.35 + 0.65 * Spring{.response = 0.3, .damping = 0.7}.valueAt(0.016);
        QVERIFY(std::abs(carried->iconOpacity() - slightly) < 1e-6);
        fixture.platform.clock.advance(1s);
        QCOMPARE(carried->iconOpacity(), 1.0);
    }

    void oneUnpinnedMeanwhileIsGone()
    {
        Fixture fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::MoveAction);
            fixture.store.removeShortcut(fixture.notes);
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::IgnoreAction);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.names(), QStringLiteral("Finder Mail"));
        QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Mail"));
    }

    void onePinnedMeanwhileStays()
    {
        Fixture fixture;
        const AppShortcut other{QStringLiteral("/Applications/Maps.app"), std::nullopt, QStringLiteral("Maps")};
        fixture.drag(first, [&] {
            fixture.store.addShortcut(other);
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Mail Notes Maps"));
    }

    void otherSettingsThatChangeMeanwhileLeaveTheOrder()
    {
        Fixture fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction);
            fixture.store.change([](Settings &settings) { settings.showSeconds = !settings.showSeconds; });
            QCOMPARE(fixture.names(), QStringLiteral("Finder Mail Notes"));
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Mail Notes"));
    }

    void whatIsCarriedElsewhereIsNoneOfTheRows()
    {
        Fixture fixture;
        QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::IgnoreAction);
        fixture.drag(first, [&] { QCOMPARE(fixture.carryTo(third, fixture.mail), Qt::IgnoreAction); });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::IgnoreAction);
        QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
    }

    void theBarIsHeldAndAClickDoesNotFollow()
    {
        Fixture fixture;
        fixture.drag(first, [&] { QVERIFY(fixture.holds.isHeld()); });
        fixture.hand.release(first + QPoint(12, 0));
        QVERIFY(!fixture.holds.isHeld());
        QCOMPARE(fixture.platform.workspace.openings.size(), 0);
    }

    void recentOnesAreNotCarried()
    {
        Fixture fixture;
        auto *button = new AppShortcutButton(fixture.context(), fixture.mail, false);
        fixture.hand.scene.addItem(button);
        button->setPos(200, 20);
        QSignalSpy drags(button, &BarItem::draggedChanged);
        fixture.hand.press({220, 40});
        fixture.hand.move({250, 40});
        fixture.hand.release({250, 40});
        QCOMPARE(drags.size(), 0);
    }

    void reorderedFollowsTheIds();
};

namespace {

/// Acts in the event loop of a drag: as soon as the system is asked for one.
class OnDrag final : public QObject {
public:
    explicit OnDrag(std::function<void()> act)
        : m_act(std::move(act))
    {
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::ChildAdded)
            std::exchange(m_act, [] {})();
        return false;
    }

private:
    std::function<void()> m_act;
};

} // namespace

void ShortcutDragTest::wherePlaceIsKnownBeforeTheEndItIsTheEndThatCounts()
{
    QFETCH(bool, isCancelled);
    QFETCH(QString, left);
    Fixture fixture;
    OnDrag onDrag([&] {
        fixture.letGoAt(offTheBar);
        QCOMPARE(fixture.storedNames(), QStringLiteral("Notes Finder Mail"));
        if (isCancelled)
            fixture.platform.popupWindows.pressEscape();
    });
    fixture.hand.scene.views().first()->installEventFilter(&onDrag);
    fixture.drag(first, [] {});
    fixture.platform.clock.advance(1s);
    QCOMPARE(fixture.storedNames(), left);
}

void ShortcutDragTest::cancelledItIsNotLookedAfterAnyMore()
{
    Fixture fixture;
    const auto timers = fixture.platform.clock.runningTimers();
    fixture.platform.pointer.buttons = Qt::LeftButton;
    OnDrag onDrag([&] { fixture.platform.popupWindows.pressEscape(); });
    fixture.hand.scene.views().first()->installEventFilter(&onDrag);
    fixture.drag(first, [] {});
    fixture.platform.clock.advance(1s);
    QCOMPARE(fixture.platform.clock.runningTimers(), timers);
    fixture.letGoAt(offTheBar);
    QCOMPARE(fixture.storedNames(), QStringLiteral("Notes Finder Mail"));
    QCOMPARE(fixture.written.size(), 0);
}

void ShortcutDragTest::reorderedFollowsTheIds()
{
    const IconsFixture known;
    const AppShortcut again{QStringLiteral("/other/Mail.app"), known.mail.bundleIdentifier, QStringLiteral("Mail 2")};
    const QList<AppShortcut> shortcuts{known.mail, known.notes, again, known.finder};
    QCOMPARE(reordered(shortcuts, {known.finder.id(), known.mail.id(), known.notes.id(), known.mail.id()}),
        (QList{known.finder, known.mail, known.notes, again}));
    QCOMPARE(reordered(shortcuts, {known.notes.id(), QStringLiteral("gone")}),
        (QList{known.notes, known.mail, again, known.finder}));
    QCOMPARE(reordered(shortcuts, {}), shortcuts);
}

MOORLINE_TEST(ShortcutDragTest);
#include "ShortcutDragTest.moc"
