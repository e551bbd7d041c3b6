#include "freedesktop/TaskbarRule.h"
#include "harness/TestCase.h"

namespace {

using moorline::taskbarWindows;
using moorline::WindowFacts;
using Windows = QSet<moorline::XWindowId>;

WindowFacts dialog(moorline::XWindowId window, moorline::XWindowId of)
{
    return {.window = window, .transientFor = of};
}

class TaskbarRuleTest : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void ordinaryWindowsAreShown();
    void othersAreNot();
    void oneThatAsksNotToBeIsNot();
    void aDialogOfOneThatIsShownIsNot();
    void aDialogOfOneThatIsNotShownIs();
    void aDialogOfNoKnownWindowIs();
    void aDialogOfADialogIsNot();
    void inACircleNobodyIsADialog();
};

void TaskbarRuleTest::ordinaryWindowsAreShown()
{
    QCOMPARE(taskbarWindows({{.window = 1}, {.window = 2, .isMinimised = true}}), (Windows{1, 2}));
}

void TaskbarRuleTest::othersAreNot()
{
    QCOMPARE(taskbarWindows({{.window = 1, .isOrdinary = false}}), Windows());
}

void TaskbarRuleTest::oneThatAsksNotToBeIsNot()
{
    QCOMPARE(taskbarWindows({{.window = 1, .skipsTaskbar = true}}), Windows());
}

void TaskbarRuleTest::aDialogOfOneThatIsShownIsNot()
{
    QCOMPARE(taskbarWindows({dialog(2, 1), {.window = 1}}), Windows{1});
}

void TaskbarRuleTest::aDialogOfOneThatIsNotShownIs()
{
    QCOMPARE(taskbarWindows({{.window = 1, .skipsTaskbar = true}, dialog(2, 1)}), Windows{2});
    QCOMPARE(taskbarWindows({{.window = 1, .isOrdinary = false}, dialog(2, 1)}), Windows{2});
}

void TaskbarRuleTest::aDialogOfNoKnownWindowIs()
{
    QCOMPARE(taskbarWindows({dialog(2, 99)}), Windows{2});
}

void TaskbarRuleTest::aDialogOfADialogIsNot()
{
    QCOMPARE(taskbarWindows({{.window = 1}, dialog(2, 1), dialog(3, 2)}), Windows{1});
}

void TaskbarRuleTest::inACircleNobodyIsADialog()
{
    QCOMPARE(taskbarWindows({dialog(1, 2), dialog(2, 1), dialog(3, 3)}), (Windows{1, 2, 3}));
}

MOORLINE_TEST(TaskbarRuleTest);

} // namespace

#include "TaskbarRuleTest.moc"
