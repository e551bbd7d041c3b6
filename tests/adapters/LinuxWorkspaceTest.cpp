#include "WorkspaceTestCase.h"
#include "platform/linux/apps/WindowRaising.h"
#include "platform/linux/x11/WindowRequests.h"

#include <QSignalSpy>
#include <unistd.h>

namespace {

using moorline::RunningApplication;
using moorline::Workspace;
using moorline::test::WindowPlan;

const QString paint = QStringLiteral("paint");
const QString write = QStringLiteral("write");

/// The applications of a desktop with a window manager.
class LinuxWorkspaceTest final : public moorline::test::WorkspaceTestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        WorkspaceTestCase::init();
        start();
        QTRY_COMPARE(identifiers(), QStringList());
    }

    void whatHasAWindowRuns()
    {
        QVERIFY(showManaged(plan("paint")));
        QTRY_COMPARE(identifiers(), QStringList{paint});
        const RunningApplication running = application(paint);
        QCOMPARE(running.bundlePath, entryPath(paint));
        QCOMPARE(running.process, qint64(getpid()));
        QCOMPARE(running.activationPolicy, moorline::ActivationPolicy::regular);
        QVERIFY(!running.isTerminated);
    }

    void twoWindowsAreOneApplication()
    {
        QVERIFY(showManaged(plan("paint")));
        const xcb_window_t second = showManaged(plan("paint"));
        QTRY_COMPARE(identifiers(), QStringList{paint});
        const quint64 id = application(paint).id;
        foreign->destroy(second);
        QTest::qWait(100);
        QCOMPARE(application(paint).id, id);
    }

    void applicationsComeInTheOrderOfTheirFirstWindows()
    {
        QVERIFY(showManaged(plan("write")));
        const xcb_window_t second = showManaged(plan("paint"));
        QTRY_COMPARE(identifiers(), (QStringList{write, paint}));
        foreign->activate(second);
        QTest::qWait(100);
        QCOMPARE(identifiers(), (QStringList{write, paint}));
    }

    void aProgramWithoutAnEntryHasNoIdentifier()
    {
        QVERIFY(showManaged(plan("odd")));
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("nobody")});
        QVERIFY(!workspace->runningApplications()->first().bundlePath);
    }

    void whatATaskbarWouldNotShowDoesNotRun()
    {
        WindowPlan tool = plan("paint");
        tool.type = QByteArrayLiteral("_NET_WM_WINDOW_TYPE_UTILITY");
        QVERIFY(showManaged(tool));
        WindowPlan shy = plan("write");
        shy.states = {QByteArrayLiteral("_NET_WM_STATE_SKIP_TASKBAR")};
        QVERIFY(showManaged(shy));
        QVERIFY(showManaged(plan("odd")));
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("nobody")});
    }

    void aProgramMaySayLateWhoItIs()
    {
        const xcb_window_t window = showManaged(plan("odd"));
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("nobody")});
        foreign->setBytes(window, "WM_CLASS", "STRING", QByteArrayLiteral("write\0write\0"));
        QTRY_COMPARE(identifiers(), QStringList{write});
        foreign->setBytes(window, "_GTK_APPLICATION_ID", "UTF8_STRING", "paint");
        QTRY_COMPARE(identifiers(), QStringList{paint});
    }

    void theServerKnowsTheProcess()
    {
        WindowPlan boxed = plan("paint");
        boxed.process = 2;
        QVERIFY(showManaged(boxed));
        QTRY_COMPARE(application(paint).process, qint64(getpid()));
    }

    void aWindowOfAnotherMachineHasNoProcess()
    {
        const xcb_window_t window = foreign->create(plan("paint"));
        foreign->setBytes(window, "WM_CLIENT_MACHINE", "STRING", "elsewhere.example");
        foreign->map(window);
        QTRY_COMPARE(identifiers(), QStringList{paint});
        QVERIFY(!application(paint).process);
    }

    void anEntryMayBeInstalledWhileItsProgramRuns()
    {
        QVERIFY(showManaged(plan("draw")));
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("nobody")});
        writeEntry(QStringLiteral("draw"));
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("draw")});
    }

    void comingsAndGoingsAreTold()
    {
        QSignalSpy launched(workspace.get(), &Workspace::applicationLaunched);
        QSignalSpy terminated(workspace.get(), &Workspace::applicationTerminated);
        const xcb_window_t window = showManaged(plan("paint"));
        QTRY_COMPARE(launched.size(), 1);
        foreign->move(window, {400, 300});
        QTest::qWait(100);
        QCOMPARE(launched.size(), 1);
        QCOMPARE(terminated.size(), 0);
        foreign->destroy(window);
        QTRY_COMPARE(terminated.size(), 1);
        QCOMPARE(identifiers(), QStringList());
        QCOMPARE(launched.size(), 1);
    }

    void whoComesToTheFrontIsTold()
    {
        const xcb_window_t first = showInFront("paint");
        QVERIFY(first);
        QVERIFY(showInFront("write"));
        QCOMPARE(identifiers(), (QStringList{paint, write}));
        QVERIFY(bringToFront(first, "paint"));
    }

    void anotherDesktopIsAnotherSpace()
    {
        QSignalSpy changes(workspace.get(), &Workspace::activeSpaceChanged);
        foreign->switchToDesktop(1);
        QTRY_COMPARE(changes.size(), 1);
        foreign->switchToDesktop(0);
        QTRY_COMPARE(changes.size(), 2);
    }

    void activatingRaisesAllWindowsAndActivatesTheLast()
    {
        const xcb_window_t first = showInFront("paint", {100, 100, 300, 200});
        const xcb_window_t second = showInFront("paint", {150, 150, 300, 200});
        QVERIFY(bringToFront(first, "paint"));
        const xcb_window_t other = showInFront("write", {120, 120, 400, 300});
        QCOMPARE(identifiers(), (QStringList{paint, write}));
        QVERIFY(foreign->isAbove(other, first));
        QVERIFY(foreign->isAbove(other, second));

        workspace->activate(application(paint));
        QTRY_COMPARE(foreign->activeWindow(), first);
        QTRY_VERIFY(foreign->isAbove(first, other));
        QTRY_VERIFY(foreign->isAbove(second, other));
        QVERIFY(foreign->isAbove(first, second));
    }

    void whatIsRaisedDoesNotGetTheFocus()
    {
        const xcb_window_t first = showActive(plan("paint"));
        const xcb_window_t second = showActive(plan("paint"));
        const xcb_window_t other = showInFront("write");
        const moorline::WindowRequests requests(*connection);
        moorline::raiseWithoutFocus({first, second}, clients->snapshot(), requests);
        QTRY_VERIFY(foreign->isAbove(second, other));
        QVERIFY(foreign->isAbove(second, first));
        QVERIFY(foreign->isAbove(first, other));
        QTest::qWait(100);
        QCOMPARE(foreign->activeWindow(), other);
    }

    void activatingSwitchesToTheDesktopFirst()
    {
        const xcb_window_t window = showInFront("paint");
        QSignalSpy changes(workspace.get(), &Workspace::activeSpaceChanged);
        foreign->switchToDesktop(1);
        QTRY_COMPARE(changes.size(), 1);
        workspace->activate(application(paint));
        QTRY_COMPARE(currentDesktop(), 0U);
        QTRY_COMPARE(foreign->activeWindow(), window);
        QVERIFY(foreign->isViewable(window));
    }

    void activatingLeavesMinimisedWindowsAlone()
    {
        const xcb_window_t minimised = showInFront("paint");
        const xcb_window_t open = showInFront("paint");
        QVERIFY(showInFront("write"));
        foreign->iconify(minimised);
        QTRY_VERIFY(!foreign->isViewable(minimised));
        QTRY_COMPARE(identifiers(), (QStringList{paint, write}));
        workspace->activate(application(paint));
        QTRY_COMPARE(foreign->activeWindow(), open);
        QTest::qWait(100);
        QVERIFY(!foreign->isViewable(minimised));
    }

    void activatingWhereAllAreMinimisedReturnsTheLast()
    {
        const xcb_window_t first = showInFront("paint");
        const xcb_window_t second = showInFront("paint");
        QVERIFY(bringToFront(first, "paint"));
        foreign->iconify(second);
        foreign->iconify(first);
        QTRY_VERIFY(!foreign->isViewable(first) && !foreign->isViewable(second));
        workspace->activate(application(paint));
        QTRY_COMPARE(foreign->activeWindow(), first);
        QVERIFY(!foreign->isViewable(second));
    }

    void whatWasStartedHereIsKnownByItsProcessUntilThatEnds()
    {
        Q_EMIT starter->started(entryPath(paint), QStringLiteral("id"), getpid());
        const xcb_window_t window = showManaged(plan("odd"));
        QTRY_COMPARE(identifiers(), QStringList{paint});
        foreign->destroy(window);
        QTRY_COMPARE(identifiers(), QStringList());
        Q_EMIT starter->ended(entryPath(paint), getpid());
        QVERIFY(showManaged(plan("odd")));
        QTRY_COMPARE(identifiers(), QStringList{QStringLiteral("nobody")});
    }

    void aWindowIsNotToldOfBeforeItIsKnownWhoseItIs()
    {
        Q_EMIT starter->started(entryPath(paint), QStringLiteral("id"), getpid());
        QList<QStringList> told;
        connect(workspace.get(), &Workspace::applicationLaunched, this, [&] { told.append(identifiers()); });
        QVERIFY(showManaged(plan("odd")));
        QTRY_COMPARE(told, QList<QStringList>{{paint}});
    }

    void oneThatIsGoneIsLeftAlone()
    {
        const xcb_window_t window = showManaged(plan("paint"));
        QTRY_COMPARE(identifiers(), QStringList{paint});
        const RunningApplication gone = application(paint);
        foreign->destroy(window);
        QTRY_COMPARE(identifiers(), QStringList());
        workspace->activate(gone);
        workspace->terminate(gone);
    }

private:
    [[nodiscard]] std::uint32_t currentDesktop() const
    {
        return foreign->values(foreign->root(), "_NET_CURRENT_DESKTOP").value(0);
    }
};

MOORLINE_TEST(LinuxWorkspaceTest);

} // namespace

#include "LinuxWorkspaceTest.moc"
