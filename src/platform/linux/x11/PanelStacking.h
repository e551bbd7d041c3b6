#pragma once

#include "platform/Clock.h"
#include "platform/linux/x11/StackingOrder.h"

#include <QObject>

namespace moorline {

class ClientWindows;
class XConnection;

/// Keeps the panel directly above everything that the window manager stacks, full-screen windows with the focus
/// included. What bypasses the window manager as the panel does, such as menus, notifications and screen lockers, is
/// never passed.
class PanelStacking final : public QObject {
    Q_OBJECT
public:
    PanelStacking(XConnection &connection, ClientWindows &clients, Clock &clock);

    /// Puts the window in its place and keeps it there from now on.
    void keepInPlace(xcb_window_t panel);

private:
    void noteStructure(const xcb_generic_event_t &event);
    void noteProperty(xcb_window_t window, xcb_atom_t name);
    void scheduleCheck();
    void check();
    /// None when the window manager has no window.
    [[nodiscard]] xcb_window_t highestManagedFrame();
    void placeAbove(xcb_window_t sibling);
    [[nodiscard]] bool mayRestack();

    XConnection &m_connection;
    ClientWindows &m_clients;
    StackingOrder m_order;
    xcb_window_t m_panel = XCB_WINDOW_NONE;
    bool m_isCheckScheduled = false;
    Clock &m_clock;
    std::chrono::milliseconds m_firstRestackAt{0};
    int m_restacks = 0;
    std::unique_ptr<Clock::Timer> m_retry;
};

} // namespace moorline
