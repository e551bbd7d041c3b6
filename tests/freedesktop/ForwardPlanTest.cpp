#include "freedesktop/ForwardPlan.h"
#include "harness/TestCase.h"

namespace {

using moorline::ForwardPlan;
using moorline::planForward;
using moorline::raiseBase;
using moorline::raiseManner;
using moorline::RaiseManner;
using moorline::WindowFacts;
using moorline::XWindowId;
using Windows = QList<XWindowId>;

WindowFacts on(quint32 desktop, XWindowId window)
{
    return {.window = window, .desktop = desktop};
}

WindowFacts minimised(quint32 desktop, XWindowId window)
{
    return {.window = window, .desktop = desktop, .isMinimised = true};
}

class ForwardPlanTest : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void withoutAWindowThereIsNothingToDo();
    void theLastActiveWindowIsActivated();
    void theTopmostIsActivatedWhereNoneWasActive();
    void aDialogCountsForItsWindow();
    void itsDesktopIsSwitchedToFirst();
    void othersOnItsDesktopAreRaisedFromTheBottomUp();
    void othersElsewhereStayWhereTheyAre();
    void windowsOnAllDesktopsNeedNoSwitch();
    void minimisedOnesStaySo();
    void whereAllAreMinimisedTheLastActiveReturns();
    void withoutDesktopsAllAreRaised();

    void aWindowManagerThatRestacksIsAskedTo();
    void theOneThatPlacesWithoutTheFocusIsAskedTo();
    void othersWouldGiveTheFocusAndAreNotAsked();
    void othersAreRaisedAboveTheTopmostOrdinaryWindow();
};

void ForwardPlanTest::withoutAWindowThereIsNothingToDo()
{
    QVERIFY(!planForward({}, {1}, {}, 0));
}

void ForwardPlanTest::theLastActiveWindowIsActivated()
{
    const auto plan = planForward({on(0, 1), on(0, 2), on(0, 3)}, {7, 2, 3, 1}, {}, 0);
    QVERIFY(plan);
    QCOMPARE(plan->activated, XWindowId(2));
    QVERIFY(!plan->desktop);
}

void ForwardPlanTest::theTopmostIsActivatedWhereNoneWasActive()
{
    QCOMPARE(planForward({on(0, 1), on(0, 2)}, {}, {}, 0)->activated, XWindowId(2));
}

void ForwardPlanTest::aDialogCountsForItsWindow()
{
    const auto plan = planForward({on(0, 1), on(0, 2)}, {8, 1, 2}, {{8, 7}, {7, 2}}, 0);
    QCOMPARE(plan->activated, XWindowId(2));
}

void ForwardPlanTest::itsDesktopIsSwitchedToFirst()
{
    QCOMPARE(*planForward({on(3, 1), on(0, 2)}, {1, 2}, {}, 0), (ForwardPlan{.desktop = 3, .activated = 1}));
    QCOMPARE(*planForward({on(3, 1)}, {}, {}, std::nullopt), (ForwardPlan{.desktop = 3, .activated = 1}));
}

void ForwardPlanTest::othersOnItsDesktopAreRaisedFromTheBottomUp()
{
    const auto plan = planForward({on(1, 4), on(1, 2), on(1, 9)}, {2, 9, 4}, {}, 1);
    QCOMPARE(plan->raised, (Windows{4, 9}));
    QCOMPARE(plan->activated, XWindowId(2));
}

void ForwardPlanTest::othersElsewhereStayWhereTheyAre()
{
    QCOMPARE(planForward({on(0, 1), on(1, 2), on(2, 3)}, {2}, {}, 2)->raised, Windows());
}

void ForwardPlanTest::windowsOnAllDesktopsNeedNoSwitch()
{
    const WindowFacts everywhere{.window = 5};
    QCOMPARE(*planForward({on(0, 1), on(1, 2), everywhere}, {5}, {}, 1), (ForwardPlan{.raised = {2}, .activated = 5}));
    QCOMPARE(planForward({everywhere, on(1, 2)}, {2}, {}, 0)->raised, Windows{5});
}

void ForwardPlanTest::minimisedOnesStaySo()
{
    QCOMPARE(
        *planForward({minimised(0, 1), on(0, 2), minimised(0, 3)}, {1, 3, 2}, {}, 0), (ForwardPlan{.activated = 2}));
}

void ForwardPlanTest::whereAllAreMinimisedTheLastActiveReturns()
{
    QCOMPARE(*planForward({minimised(0, 1), minimised(1, 2), minimised(0, 3)}, {2, 1}, {}, 0),
        (ForwardPlan{.desktop = 1, .activated = 2}));
}

void ForwardPlanTest::withoutDesktopsAllAreRaised()
{
    QCOMPARE(*planForward({{.window = 1}, {.window = 2}}, {1}, {}, std::nullopt),
        (ForwardPlan{.raised = {2}, .activated = 1}));
}

void ForwardPlanTest::aWindowManagerThatRestacksIsAskedTo()
{
    QCOMPARE(raiseManner({.name = QStringLiteral("Metacity"), .restacks = true}), RaiseManner::restack);
    QCOMPARE(raiseManner({.name = QStringLiteral("Xfwm4"), .restacks = true}), RaiseManner::restack);
}

void ForwardPlanTest::theOneThatPlacesWithoutTheFocusIsAskedTo()
{
    QCOMPARE(raiseManner({.name = QStringLiteral("Xfwm4")}), RaiseManner::placeAbove);
}

void ForwardPlanTest::othersWouldGiveTheFocusAndAreNotAsked()
{
    for (const char *name : {"", "i3", "xfwm4", "Xfwm4 fork"})
        QCOMPARE(raiseManner({.name = QLatin1StringView(name)}), RaiseManner::none);
}

void ForwardPlanTest::othersAreRaisedAboveTheTopmostOrdinaryWindow()
{
    QCOMPARE(raiseBase({{.window = 1}, {.window = 2}}), XWindowId(2));
    QCOMPARE(raiseBase({{.window = 1}, {.window = 2, .isManaged = false}, {.window = 3, .isViewable = false},
                 {.window = 4, .isAbove = true}, {.window = 5, .isNormal = false}}),
        XWindowId(1));
    QCOMPARE(raiseBase({{.window = 4, .isAbove = true}}), XWindowId(0));
    QCOMPARE(raiseBase({}), XWindowId(0));
}

MOORLINE_TEST(ForwardPlanTest);

} // namespace

#include "ForwardPlanTest.moc"
