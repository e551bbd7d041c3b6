#include "freedesktop/NewWindows.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace std::chrono_literals;

namespace {

using Ids = QList<XWindowId>;

const WindowFacts one{.window = 1};
const WindowFacts two{.window = 2};
const WindowFacts dialogOfTwo{.window = 3, .transientFor = 2};
const WindowFacts dialogOfDialog{.window = 4, .transientFor = 3};

} // namespace

class NewWindowsTest final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsDecidedIsToldAtOnce()
    {
        NewWindows windows;
        QCOMPARE(told(windows, {two, one}, {}, 0ms), (Ids{2, 1}));
        QVERIFY(!windows.deadline());
    }

    void whatIsUndecidedIsKeptBackForHalfASecond()
    {
        NewWindows windows;
        QCOMPARE(told(windows, {one, two}, {2}, 100ms), Ids{1});
        QCOMPARE(windows.deadline(), std::optional(600ms));
        QCOMPARE(told(windows, {one, two}, {2}, 599ms), Ids{1});
        QCOMPARE(told(windows, {one, two}, {2}, 600ms), (Ids{1, 2}));
        QVERIFY(!windows.deadline());
        QCOMPARE(NewWindows::patience, 500ms);
    }

    void whatBecomesKnownIsToldAtOnce()
    {
        NewWindows windows;
        QCOMPARE(told(windows, {one}, {1}, 0ms), Ids());
        QCOMPARE(told(windows, {one}, {}, 5ms), Ids{1});
        QVERIFY(!windows.deadline());
    }

    void whatWasToldIsNeverKeptBackAgain()
    {
        NewWindows windows;
        QCOMPARE(told(windows, {one}, {}, 0ms), Ids{1});
        QCOMPARE(told(windows, {one}, {1}, 5ms), Ids{1});
    }

    void whatWentIsNewWhenItComesAgain()
    {
        NewWindows windows;
        QCOMPARE(told(windows, {one, two}, {1}, 0ms), Ids{2});
        QCOMPARE(told(windows, {}, {}, 400ms), Ids());
        QVERIFY(!windows.deadline());
        QCOMPARE(told(windows, {one, two}, {1, 2}, 500ms), Ids());
        QCOMPARE(windows.deadline(), std::optional(1000ms));
    }

    void theNextDeadlineIsTheEarliest()
    {
        NewWindows windows;
        QCOMPARE(told(windows, {one}, {1}, 0ms), Ids());
        QCOMPARE(told(windows, {one, two}, {1, 2}, 300ms), Ids());
        QCOMPARE(windows.deadline(), std::optional(500ms));
    }

    void theDialogsOfOneThatIsKeptBackAreToo()
    {
        NewWindows windows;
        QCOMPARE(told(windows, {one, two, dialogOfTwo, dialogOfDialog}, {2}, 0ms), Ids{1});
        QCOMPARE(told(windows, {one, two, dialogOfTwo, dialogOfDialog}, {}, 1ms), (Ids{1, 2, 3, 4}));
    }

private:
    static Ids told(NewWindows &windows, const QList<WindowFacts> &all, const QSet<XWindowId> &undecided,
        std::chrono::milliseconds now)
    {
        Ids ids;
        const QList<WindowFacts> presentable = windows.presentable(all, undecided, now);
        for (const WindowFacts &window : presentable)
            ids.append(window.window);
        return ids;
    }
};

MOORLINE_TEST(NewWindowsTest);

#include "NewWindowsTest.moc"
