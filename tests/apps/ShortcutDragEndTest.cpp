#include "ShortcutDrag.h"
#include "harness/TestCase.h"

#include <QPointer>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

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

/// Where an icon that is carried is let go, and what else happens meanwhile.
class ShortcutDragEndTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
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
        ShortcutDrag fixture;
        fixture.drag(first, [] {});
        QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
        fixture.letGoAt(place);
        QCOMPARE(fixture.storedNames(), left);
        QCOMPARE(fixture.names(), left);
        QCOMPARE(fixture.platform.workspace.openings.size(), 0);
    }

    void carriedOverOthersAndOffTheBarItLeavesThemAsTheyWere()
    {
        ShortcutDrag fixture;
        fixture.drag(first, [&] { QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction); });
        fixture.letGoAt(offTheBar);
        QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Mail"));
        QCOMPARE(fixture.names(), QStringLiteral("Finder Mail"));
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
        ShortcutDrag fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Mail Notes"));
            fixture.platform.clock.advance(1s);
            fixture.platform.popupWindows.pressEscape();
        });
        QCOMPARE(fixture.storedNames(), QStringLiteral("Notes Finder Mail"));
        QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
        fixture.letGoAt(place);
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
        QCOMPARE(fixture.storedNames(), QStringLiteral("Notes Finder Mail"));
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

    void wherePlaceIsKnownBeforeTheEndItIsTheEndThatCounts()
    {
        QFETCH(bool, isCancelled);
        QFETCH(QString, left);
        ShortcutDrag fixture;
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

    void cancelledItIsNotLookedAfterAnyMore()
    {
        ShortcutDrag fixture;
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

    void carriedItIsFaint()
    {
        ShortcutDrag fixture;
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
        ShortcutDrag fixture;
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
        ShortcutDrag fixture;
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
        ShortcutDrag fixture;
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
        ShortcutDrag fixture;
        QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::IgnoreAction);
        fixture.drag(first, [&] { QCOMPARE(fixture.carryTo(third, fixture.mail), Qt::IgnoreAction); });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::IgnoreAction);
        QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
    }

    void theBarIsHeldAndAClickDoesNotFollow()
    {
        ShortcutDrag fixture;
        fixture.drag(first, [&] { QVERIFY(fixture.holds.isHeld()); });
        fixture.hand.release(first + QPoint(12, 0));
        QVERIFY(!fixture.holds.isHeld());
        QCOMPARE(fixture.platform.workspace.openings.size(), 0);
    }

    void recentOnesAreNotCarried()
    {
        ShortcutDrag fixture;
        auto *button = new AppShortcutButton(fixture.context(), fixture.mail, false);
        fixture.hand.scene.addItem(button);
        button->setPos(200, 20);
        QSignalSpy drags(button, &BarItem::draggedChanged);
        fixture.hand.press({220, 40});
        fixture.hand.move({250, 40});
        fixture.hand.release({250, 40});
        QCOMPARE(drags.size(), 0);
    }
};

MOORLINE_TEST(ShortcutDragEndTest);
#include "ShortcutDragEndTest.moc"
