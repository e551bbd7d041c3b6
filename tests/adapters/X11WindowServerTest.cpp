#include "platform/linux/x11/X11WindowServer.h"
#include "X11TestCase.h"

#include <QSignalSpy>

namespace {

using moorline::WindowDescription;
using moorline::WindowKind;
using moorline::WindowLevel;
using moorline::WindowServer;
using moorline::X11WindowServer;
using moorline::test::WindowPlan;

class X11WindowServerTest final : public moorline::test::X11TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        X11TestCase::init();
        server = std::make_unique<X11WindowServer>(*clients);
    }

    void cleanup()
    {
        server.reset();
        X11TestCase::cleanup();
    }

    void aWindowIsListedWithOwnerProcessAndLayer()
    {
        QVERIFY(showManaged({.process = 4242}));
        QTRY_VERIFY(windowOf("Probe"));
        QCOMPARE(windowOf("Probe")->ownerProcess, 4242);
        QCOMPARE(windowOf("Probe")->layer, 0);
    }

    void theBoundsIncludeTheWindowManagersFrame()
    {
        const xcb_window_t window = showManaged({});
        const xcb_window_t frame = foreign->frameOf(window);
        QVERIFY(frame != window);
        QTRY_COMPARE(boundsOf("Probe"), QRectF(foreign->geometry(frame)));
        QVERIFY(boundsOf("Probe").contains(QRectF(foreign->geometry(window))));
    }

    void theBoundsFollowAMovedWindow()
    {
        const xcb_window_t window = showManaged({.isDecorated = false});
        QTRY_COMPARE(boundsOf("Probe"), QRectF(200, 150, 300, 200));
        foreign->move(window, {400, 350});
        QTRY_COMPARE(boundsOf("Probe"), QRectF(400, 350, 300, 200));
    }

    void theBoundsAreWithoutAShadowThatTheProgramDraws()
    {
        QVERIFY(showManaged({.shadow = QMargins(20, 10, 22, 24), .isDecorated = false}));
        QTRY_COMPARE(boundsOf("Probe"), QRectF(220, 160, 258, 166));
    }

    void aShadowThatComesLaterIsTakenOff()
    {
        const xcb_window_t window = showManaged({.isDecorated = false});
        QTRY_COMPARE(boundsOf("Probe"), QRectF(200, 150, 300, 200));
        foreign->setValues(window, "_GTK_FRAME_EXTENTS", "CARDINAL", {5, 6, 7, 8});
        QTRY_COMPARE(boundsOf("Probe"), QRectF(205, 157, 289, 185));
    }

    void windowsComeFrontToBack()
    {
        const xcb_window_t first = showActive({.windowClass = QByteArrayLiteral("a\0First\0")});
        const xcb_window_t second = showActive({.windowClass = QByteArrayLiteral("b\0Second\0")});
        foreign->activate(first);
        QTRY_COMPARE(owners(), (QStringList{QStringLiteral("First"), QStringLiteral("Second")}));
        foreign->activate(second);
        QTRY_COMPARE(owners(), (QStringList{QStringLiteral("Second"), QStringLiteral("First")}));
    }

    void aMinimizedWindowIsAbsent()
    {
        const xcb_window_t window = showManaged({});
        QTRY_VERIFY(windowOf("Probe"));
        foreign->iconify(window);
        QTRY_VERIFY(!windowOf("Probe"));
        foreign->activate(window);
        QTRY_VERIFY(windowOf("Probe"));
    }

    void aWindowOnAnotherDesktopIsAbsent()
    {
        const xcb_window_t window = showManaged({});
        QTRY_VERIFY(windowOf("Probe"));
        foreign->moveToDesktop(window, 1);
        QTRY_VERIFY(!windowOf("Probe"));
        foreign->switchToDesktop(1);
        QTRY_VERIFY(windowOf("Probe"));
        foreign->switchToDesktop(0);
        QTRY_VERIFY(!windowOf("Probe"));
    }

    void theDesktopItselfIsAbsent()
    {
        QVERIFY(showManaged({.windowClass = QByteArrayLiteral("d\0Desktop\0"),
            .type = QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DESKTOP")}));
        QVERIFY(showManaged({}));
        QTRY_COMPARE(owners(), QStringList{QStringLiteral("Probe")});
    }

    void aWindowAboveOthersIsOnTheFloatingLayer()
    {
        QVERIFY(showManaged({.states = {QByteArrayLiteral("_NET_WM_STATE_ABOVE")}}));
        QTRY_VERIFY(windowOf("Probe"));
        QTRY_COMPARE(windowOf("Probe")->layer, 3);
    }

    void aDockIsOnTheDocksLayer()
    {
        QVERIFY(showManaged(dockPlan({0, 840, 1440, 60})));
        QTRY_VERIFY(windowOf("Panel"));
        QCOMPARE(windowOf("Panel")->kind, WindowKind::dock);
        QCOMPARE(windowOf("Panel")->layer, server->level(WindowLevel::dock));
        QCOMPARE(boundsOf("Panel"), QRectF(0, 840, 1440, 60));
    }

    void aDockThatBypassesTheWindowManagerIsListed()
    {
        WindowPlan plan = dockPlan({0, 840, 1440, 60});
        plan.bypassesManager = true;
        const xcb_window_t window = foreign->show(plan);
        QTRY_VERIFY(windowOf("Panel"));
        QCOMPARE(windowOf("Panel")->kind, WindowKind::dock);
        foreign->destroy(window);
        QTRY_VERIFY(!windowOf("Panel"));
    }

    void ofADockCountsWhatTakesThePointer()
    {
        const xcb_window_t window = showManaged(dockPlan({0, 760, 1440, 140}));
        QTRY_COMPARE(boundsOf("Panel"), QRectF(0, 760, 1440, 140));
        foreign->setInputRegion(window, {688, 139, 64, 1});
        QTRY_COMPARE(boundsOf("Panel"), QRectF(688, 899, 64, 1));
        foreign->setInputRegion(window, {688, 80, 64, 60});
        QTRY_COMPARE(boundsOf("Panel"), QRectF(688, 840, 64, 60));
    }

    void aDockThatSlidesIsWhereItIs()
    {
        WindowPlan plan = dockPlan({600, 840, 240, 60});
        plan.bypassesManager = true;
        const xcb_window_t window = foreign->show(plan);
        QTRY_COMPARE(boundsOf("Panel"), QRectF(600, 840, 240, 60));
        foreign->move(window, {600, 899});
        QTRY_COMPARE(boundsOf("Panel"), QRectF(600, 899, 240, 60));
    }

    void aWindowSaysWhetherItIsFullScreen()
    {
        const xcb_window_t window = showActive({});
        QTRY_VERIFY(windowOf("Probe"));
        QCOMPARE(windowOf("Probe")->isFullScreen, false);
        foreign->setFullScreen(window, true);
        QTRY_COMPARE(windowOf("Probe")->isFullScreen, true);
        foreign->setFullScreen(window, false);
        QTRY_COMPARE(windowOf("Probe")->isFullScreen, false);
    }

    void theActiveWindowSaysSo()
    {
        const xcb_window_t first = showActive({.windowClass = QByteArrayLiteral("a\0First\0")});
        QTRY_VERIFY(windowOf("First") && windowOf("First")->isActive);
        QVERIFY(showActive({.windowClass = QByteArrayLiteral("b\0Second\0")}));
        QTRY_VERIFY(windowOf("Second") && windowOf("Second")->isActive);
        QVERIFY(!windowOf("First")->isActive);
        foreign->activate(first);
        QTRY_VERIFY(windowOf("First")->isActive);
    }

    void aWindowIsOfTheKindThatItsProgramGivesIt_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<std::optional<WindowKind>>("kind");
        QTest::newRow("unsaid") << QByteArray() << std::optional(WindowKind::normal);
        QTest::newRow("normal") << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_NORMAL") << std::optional(WindowKind::normal);
        QTest::newRow("dialog") << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DIALOG") << std::optional(WindowKind::dialog);
        QTest::newRow("utility") << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_UTILITY")
                                 << std::optional(WindowKind::utility);
        QTest::newRow("other") << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_SPLASH") << std::optional(WindowKind::other);
    }

    void aWindowIsOfTheKindThatItsProgramGivesIt()
    {
        QFETCH(QByteArray, type);
        const xcb_window_t window = showManaged({.type = type});
        QTRY_VERIFY(windowOf("Probe"));
        QTEST(windowOf("Probe")->kind, "kind");
        QCOMPARE(windowOf("Probe")->id, window);
        QCOMPARE(windowOf("Probe")->transientFor, std::nullopt);
    }

    void aDialogNamesItsWindow()
    {
        const xcb_window_t film = showActive({.windowClass = QByteArrayLiteral("f\0Film\0")});
        QVERIFY(showActive({.transientFor = film}));
        QTRY_VERIFY(windowOf("Probe"));
        QCOMPARE(windowOf("Probe")->kind, WindowKind::dialog);
        QCOMPARE(windowOf("Probe")->transientFor, film);
    }

    void aChangeIsToldOnceUntilTheNextQuestion()
    {
        const xcb_window_t window = showManaged({.isDecorated = false});
        QTRY_COMPARE(boundsOf("Probe"), QRectF(200, 150, 300, 200));
        QSignalSpy changes(server.get(), &WindowServer::windowsChanged);
        foreign->move(window, {400, 350});
        QTRY_COMPARE(changes.size(), 1);
        foreign->move(window, {410, 350});
        QTest::qWait(100);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(boundsOf("Probe"), QRectF(410, 350, 300, 200));
        foreign->setFullScreen(window, true);
        QTRY_COMPARE(changes.size(), 2);
    }

    void withoutAWindowManagerNoWindowIsKnownToBeFullScreen()
    {
        QVERIFY(showManaged({}));
        QTRY_VERIFY(windowOf("Probe"));
        const auto proof = foreign->values(foreign->root(), "_NET_SUPPORTING_WM_CHECK");
        const xcb_window_t unproven = foreign->create({});
        foreign->setValues(foreign->root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {unproven});
        QTRY_VERIFY(!windowOf("Probe") || !windowOf("Probe")->isFullScreen);
        foreign->setValues(foreign->root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", proof);
        QTRY_VERIFY(windowOf("Probe") && windowOf("Probe")->isFullScreen);
    }

    void xKnowsNoSpaces() { QCOMPARE(server->managedDisplaySpaces(), std::nullopt); }

private:
    static WindowPlan dockPlan(const QRect &frame)
    {
        return {.frame = frame,
            .windowClass = QByteArrayLiteral("panel\0Panel\0"),
            .process = 4243,
            .type = QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DOCK")};
    }

    QStringList owners() const
    {
        const auto windows = server->onScreenWindows();
        QStringList names;
        for (const WindowDescription &window : *windows)
            names.append(window.ownerName.value_or(QString()));
        return names;
    }

    std::optional<WindowDescription> windowOf(const char *owner) const
    {
        const auto windows = server->onScreenWindows();
        for (const WindowDescription &window : *windows) {
            if (window.ownerName == QLatin1StringView(owner))
                return window;
        }
        return std::nullopt;
    }

    QRectF boundsOf(const char *owner) const
    {
        const auto window = windowOf(owner);
        return window ? window->bounds.value_or(QRectF()) : QRectF();
    }

    std::unique_ptr<X11WindowServer> server;
};

MOORLINE_TEST(X11WindowServerTest);

} // namespace

#include "X11WindowServerTest.moc"
