#include "platform/linux/x11/X11PanelWindow.h"
#include "X11TestCase.h"
#include "fakes/FakeClock.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QProcess>
#include <QScopeGuard>
#include <QWindow>
#include <xcb/shape.h>

namespace {

using moorline::X11PanelWindow;
using moorline::test::ForeignProgram;
using moorline::test::WindowPlan;

const QByteArray fullScreenState = QByteArrayLiteral("_NET_WM_STATE_FULLSCREEN");

class ClickCounter final : public QWidget {
public:
    int clicks = 0;

private:
    void mousePressEvent(QMouseEvent *) override { ++clicks; }
};

QPainterPath rectangle(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

/// The panel of these tests is 400 by 100 points, above the bottom edge of a screen of 1440 by 900.
class X11PanelWindowTest final : public moorline::test::X11TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        X11TestCase::init();
        foreign->setCompositing(true);
        widget = std::make_unique<ClickCounter>();
        panel = std::make_unique<X11PanelWindow>(*connection, *clients, clock);
        panel->adopt(*widget);
        panel->setFrame(shownFrame);
        QTRY_VERIFY(connection->isComposited());
    }

    void cleanup()
    {
        panel.reset();
        widget.reset();
        X11TestCase::cleanup();
    }

    void theWindowIsADockOnEveryDesktopAndInNoList()
    {
        show();
        const QList<QByteArray> states{QByteArrayLiteral("_NET_WM_STATE_ABOVE"),
            QByteArrayLiteral("_NET_WM_STATE_SKIP_PAGER"), QByteArrayLiteral("_NET_WM_STATE_SKIP_TASKBAR"),
            QByteArrayLiteral("_NET_WM_STATE_STICKY")};
        QCOMPARE(foreign->atomNames(window(), "_NET_WM_WINDOW_TYPE"),
            QList<QByteArray>{QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DOCK")});
        QCOMPARE(foreign->atomNames(window(), "_NET_WM_STATE"), states);
        QCOMPARE(foreign->values(window(), "_NET_WM_DESKTOP"), QList<std::uint32_t>{0xFFFFFFFF});
        QCOMPARE(foreign->values(window(), "_NET_WM_PID"),
            QList<std::uint32_t>{static_cast<std::uint32_t>(QCoreApplication::applicationPid())});
        QCOMPARE(foreign->bytes(window(), "WM_CLASS"), QByteArrayLiteral("moorline\0Moorline\0"));
        QVERIFY(!foreign->values(foreign->root(), "_NET_CLIENT_LIST").contains(window()));
    }

    void theWindowWantsNoKeyboardInput()
    {
        show();
        const auto hints = foreign->values(window(), "WM_HINTS");
        QCOMPARE(hints.value(0) & 1U, 1U);
        QCOMPARE(hints.value(1), 0U);
    }

    void theHintsOutliveHidingAndShowing()
    {
        show();
        widget->hide();
        QTRY_VERIFY(!foreign->isViewable(window()));
        show();
        QCOMPARE(foreign->atomNames(window(), "_NET_WM_WINDOW_TYPE"),
            QList<QByteArray>{QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DOCK")});
        QCOMPARE(foreign->atomNames(window(), "_NET_WM_STATE").size(), 4);
    }

    void aNativeWindowThatQtReplacesIsThePanelAgain()
    {
        panel->setInteractiveArea(rectangle({10, 10, 50, 50}));
        show();
        const xcb_window_t first = window();
        widget->windowHandle()->destroy();
        widget->windowHandle()->create();
        QTRY_VERIFY(foreign->isViewable(window()));
        QVERIFY(window() != first);
        QTRY_COMPARE(foreign->atomNames(window(), "_NET_WM_WINDOW_TYPE"),
            QList<QByteArray>{QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DOCK")});
        QTRY_COMPARE(foreign->shape(window(), XCB_SHAPE_SK_INPUT), QRect(10, 10, 50, 50));
        QTRY_COMPARE(foreign->geometry(window()), QRect(520, 811, 400, 100));
        const xcb_window_t film = showActive({.states = {fullScreenState}});
        QTRY_VERIFY(foreign->isAbove(window(), film));
    }

    void theFrameCountsFromTheBottomLeft()
    {
        show();
        QCOMPARE(panel->frame(), shownFrame);
        QTRY_COMPARE(foreign->geometry(window()), QRect(520, 811, 400, 100));
        panel->setFrame({10, 20, 300, 132});
        QCOMPARE(panel->frame(), QRectF(10, 20, 300, 132));
        QTRY_COMPARE(foreign->geometry(window()), QRect(10, 748, 300, 132));
    }

    void theFarthestFrameThatAWindowCanHaveIsTaken()
    {
        show();
        panel->setFrame({-16383, 16383, 16383, 1});
        QCOMPARE(panel->frame(), QRectF(-16383, 16383, 16383, 1));
        panel->setFrame(shownFrame);
        QCOMPARE(panel->frame(), shownFrame);
        QTRY_COMPARE(foreign->geometry(window()), QRect(520, 811, 400, 100));
    }

    void theLevelIsKept()
    {
        panel->setLevel(21);
        QCOMPARE(panel->level(), 21);
    }

    void theFocusedFullScreenWindowLiesBelow()
    {
        show();
        const xcb_window_t film = showActive({.states = {fullScreenState}});
        QCOMPARE(foreign->activeWindow(), film);
        QTRY_VERIFY(foreign->isAbove(window(), film));
        QCOMPARE(foreign->geometry(film), QRect(0, 0, 1440, 900));
    }

    void aPanelThatShowsLaterIsAboveTheFullScreenWindow()
    {
        const xcb_window_t film = showActive({.states = {fullScreenState}});
        QCOMPARE(foreign->activeWindow(), film);
        show();
        QTRY_VERIFY(foreign->isAbove(window(), film));
    }

    void windowsThatAreRaisedStayBelow()
    {
        show();
        const xcb_window_t first = showActive({});
        const xcb_window_t second = showActive({.states = {QByteArrayLiteral("_NET_WM_STATE_ABOVE")}});
        for (const xcb_window_t raised : {first, second, first}) {
            foreign->activate(raised);
            QTRY_COMPARE(foreign->activeWindow(), raised);
            QTRY_VERIFY(foreign->isAbove(window(), first) && foreign->isAbove(window(), second));
        }
    }

    void anotherDockLiesBelow()
    {
        show();
        const xcb_window_t dock =
            showManaged({.frame = {0, 840, 1440, 60}, .type = QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DOCK")});
        QTRY_VERIFY(foreign->isAbove(window(), dock));
    }

    void whatBypassesTheWindowManagerStaysAbove()
    {
        show();
        const xcb_window_t locker = foreign->show({.frame = {0, 0, 1440, 900}, .bypassesManager = true});
        const xcb_window_t raised = showActive({});
        QTRY_VERIFY(foreign->isAbove(window(), raised));
        // A window manager may put a window of its own above; the panel alone never goes there.
        QCOMPARE(foreign->isAbove(locker, window()), foreign->isAbove(locker, raised));
    }

    void aPanelThatShowsLaterDoesNotCoverAScreenLocker()
    {
        QVERIFY(showManaged({}));
        const xcb_window_t locker = foreign->show({.frame = {0, 0, 1440, 900}, .bypassesManager = true});
        show();
        QVERIFY(foreign->isAbove(locker, window()));
    }

    void showingLeavesTheFocusWhereItIs()
    {
        const xcb_window_t other = showActive({});
        QTRY_COMPARE(foreign->focus(), other);
        show();
        QCOMPARE(foreign->focus(), other);
        QCOMPARE(foreign->activeWindow(), other);
    }

    void aClickReachesThePanelAndLeavesTheFocus()
    {
        const xcb_window_t other = showActive({});
        QTRY_COMPARE(foreign->focus(), other);
        show();
        foreign->click({720, 860});
        QTRY_COMPARE(widget->clicks, 1);
        QCOMPARE(foreign->focus(), other);
        QCOMPARE(foreign->activeWindow(), other);
        QVERIFY(!widget->isActiveWindow());
    }

    void aClickBesideTheInteractiveAreaReachesTheWindowBelow()
    {
        const xcb_window_t below = showActive({.frame = {300, 500, 900, 380}});
        panel->setInteractiveArea(rectangle({13, 13, 374, 72}));
        show();
        foreign->click({525, 850});
        QTRY_COMPARE(foreign->clicks(below), 1);
        // The click may have raised the window.
        QTRY_VERIFY(foreign->isAbove(window(), below));
        foreign->click({540, 850});
        QTRY_COMPARE(widget->clicks, 1);
        QCOMPARE(foreign->clicks(below), 1);
    }

    void anEmptyInteractiveAreaTakesNoInput()
    {
        const xcb_window_t below = showActive({.frame = {300, 500, 900, 380}});
        panel->setInteractiveArea({});
        show();
        foreign->click({720, 860});
        QTRY_COMPARE(foreign->clicks(below), 1);
        QCOMPARE(widget->clicks, 0);
    }

    void theInteractiveAreaMayChange()
    {
        show();
        panel->setInteractiveArea(rectangle({10, 10, 50, 50}));
        QTRY_COMPARE(foreign->shape(window(), XCB_SHAPE_SK_INPUT), QRect(10, 10, 50, 50));
        panel->setInteractiveArea(rectangle({10, 10, 80, 40}));
        QTRY_COMPARE(foreign->shape(window(), XCB_SHAPE_SK_INPUT), QRect(10, 10, 80, 40));
    }

    void withoutACompositorTheWindowIsCutToTheInteractiveArea()
    {
        panel->setInteractiveArea(rectangle({13, 13, 374, 72}));
        show();
        QTRY_COMPARE(bounding(), QRect(0, 0, 400, 100));
        foreign->setCompositing(false);
        QTRY_COMPARE(bounding(), QRect(13, 13, 374, 72));
        foreign->setCompositing(true);
        QTRY_COMPARE(bounding(), QRect(0, 0, 400, 100));
    }

    void belowTheScreenThereIsNothingToSee()
    {
        show();
        panel->setFrame({520, -104, 400, 100});
        QTRY_COMPARE(bounding(), QRect());
        panel->setFrame(shownFrame);
        QTRY_COMPARE(bounding(), QRect(0, 0, 400, 100));
    }

    void onAScreenBelowThereIsNothingToSee()
    {
        const auto restore = qScopeGuard([] { xrandr("--delmonitor upper --delmonitor lower"); });
        xrandr("--setmonitor *upper 1440/360x450/112+0+0 screen");
        xrandr("--setmonitor lower 1440/360x450/112+0+450 none");
        QTRY_COMPARE(QGuiApplication::screens().size(), 2);
        panel->setFrame(shownFrame);
        show();
        QTRY_COMPARE(foreign->geometry(window()), QRect(520, 361, 400, 100));
        QTRY_COMPARE(bounding(), QRect(0, 0, 400, 89));
        panel->setFrame({520, -104, 400, 100});
        QTRY_COMPARE(bounding(), QRect());
    }

private:
    static void xrandr(const char *arguments)
    {
        QProcess program;
        program.start(QStringLiteral("xrandr"), QString::fromLatin1(arguments).split(u' '));
        QVERIFY(program.waitForFinished());
    }

    void show()
    {
        panel->orderFrontRegardless();
        QVERIFY(QTest::qWaitFor([this] { return foreign->isViewable(window()); }));
    }

    xcb_window_t window() const { return static_cast<xcb_window_t>(widget->windowHandle()->winId()); }
    QRect bounding() const { return foreign->shape(window(), XCB_SHAPE_SK_BOUNDING); }

    const QRectF shownFrame{520, -11, 400, 100};
    std::unique_ptr<ClickCounter> widget;
    moorline::test::FakeClock clock;
    std::unique_ptr<X11PanelWindow> panel;
};

MOORLINE_TEST(X11PanelWindowTest);

} // namespace

#include "X11PanelWindowTest.moc"
