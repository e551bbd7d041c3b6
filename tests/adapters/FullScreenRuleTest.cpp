#include "platform/linux/x11/FullScreenRule.h"
#include "harness/TestCase.h"

namespace {

using moorline::ClientSnapshot;
using moorline::ClientWindow;

const QRect primary(0, 0, 1440, 900);
const QRect secondary(1440, 0, 1280, 720);
constexpr qint64 ownProcess = 77;
constexpr xcb_window_t film = 1;
constexpr xcb_window_t other = 2;

ClientWindow window(xcb_window_t number, const QRect &frame)
{
    ClientWindow window;
    window.window = number;
    window.isManaged = true;
    window.isViewable = true;
    window.process = 100 + number;
    window.frame = frame;
    return window;
}

ClientWindow fullScreen(const QRect &frame)
{
    ClientWindow window = ::window(film, frame);
    window.isFullScreen = true;
    return window;
}

ClientSnapshot desktop(const QList<ClientWindow> &windows, xcb_window_t active)
{
    ClientSnapshot snapshot;
    snapshot.windowManagerProof = 9;
    snapshot.activeWindow = active;
    snapshot.currentDesktop = 0;
    snapshot.windows = windows;
    return snapshot;
}

bool isFullScreenSpace(const ClientSnapshot &snapshot)
{
    return moorline::isFullScreenSpace(snapshot, primary, ownProcess);
}

class FullScreenRuleTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theActiveFullScreenWindowCounts() { QVERIFY(isFullScreenSpace(desktop({fullScreen(primary)}, film))); }

    void anOrdinaryWindowThatCoversTheScreenDoesNot()
    {
        QVERIFY(!isFullScreenSpace(desktop({window(film, primary)}, film)));
    }

    void fullScreenOnAnotherScreenDoesNotCount()
    {
        QVERIFY(!isFullScreenSpace(desktop({fullScreen(secondary)}, film)));
    }

    void itRemainsWhileAnotherScreenIsActive()
    {
        QVERIFY(isFullScreenSpace(desktop({fullScreen(primary), window(other, {1500, 10, 300, 200})}, other)));
    }

    void itRemainsWhileNothingIsActive()
    {
        QVERIFY(isFullScreenSpace(desktop({fullScreen(primary)}, XCB_WINDOW_NONE)));
    }

    void itRemainsWhileAWindowOfThisProgramIsActive()
    {
        ClientWindow own = window(other, {100, 100, 300, 200});
        own.process = ownProcess;
        QVERIFY(isFullScreenSpace(desktop({fullScreen(primary), own}, other)));
    }

    void aWindowInFrontEndsItWhileNothingIsActive()
    {
        QVERIFY(
            !isFullScreenSpace(desktop({fullScreen(primary), window(other, {100, 100, 300, 200})}, XCB_WINDOW_NONE)));
    }

    void aDockInFrontDoesNotEndIt()
    {
        ClientWindow dock = window(other, {0, 840, 1440, 60});
        dock.kind = ClientWindow::Kind::dock;
        QVERIFY(isFullScreenSpace(desktop({fullScreen(primary), dock}, XCB_WINDOW_NONE)));
    }

    void anActiveWindowInFrontOfItEndsIt()
    {
        QVERIFY(!isFullScreenSpace(desktop({fullScreen(primary), window(other, {100, 100, 300, 200})}, other)));
    }

    void itsDialogsBelongToIt()
    {
        ClientWindow dialog = window(other, {100, 100, 300, 200});
        dialog.transientFor = film;
        QVERIFY(isFullScreenSpace(desktop({fullScreen(primary), dialog}, other)));
    }

    void aHiddenFullScreenWindowDoesNotCount()
    {
        ClientWindow hidden = fullScreen(primary);
        hidden.isHidden = true;
        QVERIFY(!isFullScreenSpace(desktop({hidden}, XCB_WINDOW_NONE)));
    }

    void aFullScreenWindowOnAnotherDesktopDoesNotCount()
    {
        ClientWindow away = fullScreen(primary);
        away.desktop = 1;
        QVERIFY(!isFullScreenSpace(desktop({away}, film)));
    }

    void aFullScreenWindowOverAllScreensCounts()
    {
        QVERIFY(isFullScreenSpace(desktop({fullScreen(primary | secondary)}, film)));
    }
};

MOORLINE_TEST(FullScreenRuleTest);

} // namespace

#include "FullScreenRuleTest.moc"
