#pragma once

#include <QList>
#include <QString>
#include <initializer_list>
#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// What is asked of the window manager, in the place of a pager. It obeys later, or not at all.
class WindowRequests final {
public:
    /// `connection` outlives it.
    explicit WindowRequests(const XConnection &connection);

    // `time` is when the user asked for it, by the server's clock.
    void switchToDesktop(std::uint32_t desktop, xcb_timestamp_t time) const;
    void activate(xcb_window_t window, xcb_timestamp_t time) const;
    /// A window that cannot be asked to close may be killed.
    void close(xcb_window_t window, xcb_timestamp_t time) const;
    /// Above all, one after the other.
    void restack(const QList<xcb_window_t> &windows) const;
    /// Above `sibling`, one after the other.
    void placeAbove(const QList<xcb_window_t> &windows, xcb_window_t sibling) const;

    /// What the window manager calls itself; empty where it does not say. Waits for the server.
    [[nodiscard]] QString managerName() const;
    /// Whether the window manager says that it obeys restack(). Waits for the server.
    [[nodiscard]] bool restacks() const;
    /// Whether the program of a window wants to be asked before it closes. Waits for the server.
    [[nodiscard]] bool canBeAskedToClose(xcb_window_t window) const;

private:
    void requestPlaceAbove(xcb_window_t window, xcb_window_t sibling) const;
    void send(xcb_window_t window, xcb_atom_t type, std::initializer_list<std::uint32_t> values) const;

    const XConnection &m_connection;
};

} // namespace moorline
