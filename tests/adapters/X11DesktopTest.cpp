#include "X11TestCase.h"
#include "fakes/FakeClock.h"
#include "platform/linux/docks/DockWindows.h"
#include "platform/linux/x11/X11Pointer.h"
#include "platform/linux/x11/X11Screens.h"

#include <QProcess>
#include <QSignalSpy>

namespace {

using moorline::DockWindow;
using moorline::DockWindows;
using moorline::Screen;
using moorline::Screens;
using moorline::X11Pointer;
using moorline::X11Screens;

/// The adapters that only listen.
class X11DesktopTest final : public moorline::test::X11TestCase {
    Q_OBJECT

private Q_SLOTS:
    void thePointerCountsFromTheBottomLeft()
    {
        const X11Pointer pointer(*connection);
        foreign->movePointer({30, 890});
        QCOMPARE(pointer.location(), QPointF(30, 10));
        foreign->movePointer({1439, 0});
        QCOMPARE(pointer.location(), QPointF(1439, 900));
    }

    void theButtonsAreThoseHeldDownAnywhere_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::newRow("left") << 1 << Qt::LeftButton;
        QTest::newRow("middle") << 2 << Qt::MiddleButton;
        QTest::newRow("right") << 3 << Qt::RightButton;
    }

    void theButtonsAreThoseHeldDownAnywhere()
    {
        QFETCH(int, number);
        QFETCH(Qt::MouseButton, button);
        const X11Pointer pointer(*connection);
        const auto native = static_cast<std::uint8_t>(number);
        // The window is not managed, so that no window manager makes anything of the press.
        const xcb_window_t target = foreign->show({.bypassesManager = true});
        foreign->movePointer({300, 250});
        foreign->setButton(native, true);
        QCOMPARE(pointer.pressedButtons(), Qt::MouseButtons(button));
        foreign->setButton(native, false);
        QCOMPARE(pointer.pressedButtons(), Qt::MouseButtons());
        QCOMPARE(foreign->clicks(target), 1);
    }

    void theScreenIsTheWholeDisplay()
    {
        const X11Screens screens(connection.get());
        const QList<Screen> all = screens.screens();
        QCOMPARE(all.size(), 1);
        QCOMPARE(all.first().frame, QRectF(0, 0, 1440, 900));
        QCOMPARE(all.first().scale, 1.0);
    }

    void aReservedEdgeIsOutsideTheVisibleFrame()
    {
        const X11Screens screens(connection.get());
        QSignalSpy changes(&screens, &Screens::screensChanged);
        const xcb_window_t dock = foreign->create(dockPlan());
        foreign->setValues(dock, "_NET_WM_STRUT_PARTIAL", "CARDINAL", {0, 0, 0, 60, 0, 0, 0, 0, 0, 0, 0, 1439});
        foreign->map(dock);
        QTRY_COMPARE(screens.screens().first().visibleFrame, QRectF(0, 60, 1440, 840));
        QVERIFY(!changes.isEmpty());
        foreign->destroy(dock);
        QTRY_COMPARE(screens.screens().first().visibleFrame, QRectF(0, 0, 1440, 900));
    }

    void whileTheOnlyOutputIsDarkThereIsNoScreen()
    {
        const X11Screens screens(connection.get());
        QSignalSpy changes(&screens, &Screens::screensChanged);
        xrandr(QStringLiteral("--off"));
        QTRY_VERIFY(screens.screens().isEmpty());
        QVERIFY(!changes.isEmpty());
        xrandr(QStringLiteral("--auto"));
        QTRY_COMPARE(screens.screens().size(), 1);
        QTRY_COMPARE(screens.screens().first().frame, QRectF(0, 0, 1440, 900));
    }

    void aDockIsListedWithProgramFrameAndStrut()
    {
        const DockWindows docks(*clients);
        QVERIFY(docks.windows().isEmpty());
        const xcb_window_t dock = foreign->create(dockPlan());
        foreign->setValues(dock, "_NET_WM_STRUT_PARTIAL", "CARDINAL", {0, 0, 0, 60, 0, 0, 0, 0, 0, 0, 0, 1439});
        foreign->map(dock);
        QTRY_COMPARE(docks.windows().size(), 1);
        const DockWindow listed = docks.windows().first();
        QCOMPARE(listed.window, dock);
        QCOMPARE(listed.windowClass, QStringLiteral("Panel"));
        QCOMPARE(listed.process, 4243);
        QCOMPARE(listed.frame, QRect(0, 840, 1440, 60));
        QCOMPARE(listed.reachableFrame, QRect(0, 840, 1440, 60));
        QCOMPARE(listed.strut, QMargins(0, 0, 0, 60));
    }

    void anOrdinaryWindowIsNoDock()
    {
        const DockWindows docks(*clients);
        QVERIFY(showManaged({}));
        QVERIFY(showManaged(dockPlan()));
        QTRY_COMPARE(docks.windows().size(), 1);
        QCOMPARE(docks.windows().first().windowClass, QStringLiteral("Panel"));
    }

private:
    static void xrandr(const QString &change)
    {
        QProcess program;
        program.start(QStringLiteral("xrandr"), {QStringLiteral("--output"), QStringLiteral("screen"), change});
        // What it says of a screen without size is of no concern; the output follows.
        QVERIFY(program.waitForFinished());
    }

    static moorline::test::WindowPlan dockPlan()
    {
        return {.frame = {0, 840, 1440, 60},
            .windowClass = QByteArrayLiteral("panel\0Panel\0"),
            .process = 4243,
            .type = QByteArrayLiteral("_NET_WM_WINDOW_TYPE_DOCK")};
    }
};

MOORLINE_TEST(X11DesktopTest);

} // namespace

#include "X11DesktopTest.moc"
