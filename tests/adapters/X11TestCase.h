#pragma once

#include "ForeignProgram.h"
#include "harness/TestCase.h"
#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/XConnection.h"

namespace moorline::test {

/// A test on a real display: the program's side, and another program's.
class X11TestCase : public TestCase {
    Q_OBJECT

protected:
    /// Waits until the window manager shows the window, which a test has to before it asks for more.
    [[nodiscard]] xcb_window_t showManaged(const WindowPlan &plan)
    {
        const xcb_window_t window = foreign->show(plan);
        return QTest::qWaitFor([&] { return foreign->isManaged(window); }) ? window : xcb_window_t{XCB_WINDOW_NONE};
    }

    /// Waits until the new window has the focus as well, which some window managers give it a while later.
    [[nodiscard]] xcb_window_t showActive(const WindowPlan &plan)
    {
        const xcb_window_t window = showManaged(plan);
        return QTest::qWaitFor([&] { return foreign->activeWindow() == window; }) ? window
                                                                                  : xcb_window_t{XCB_WINDOW_NONE};
    }

    std::unique_ptr<ForeignProgram> foreign;
    std::unique_ptr<XConnection> connection;
    std::unique_ptr<ClientWindows> clients;

protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        foreign = std::make_unique<ForeignProgram>();
        connection = XConnection::open();
        QVERIFY(connection);
        clients = std::make_unique<ClientWindows>(*connection);
    }

    /// The windows of a test go with its programs, before the next begins.
    void cleanup()
    {
        clients.reset();
        connection.reset();
        foreign.reset();
        const ForeignProgram observer;
        QVERIFY(QTest::qWaitFor([&] {
            return !observer.hasWindowManager() || observer.values(observer.root(), "_NET_CLIENT_LIST").isEmpty();
        }));
        TestCase::cleanup();
    }
};

} // namespace moorline::test
