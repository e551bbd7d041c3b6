#pragma once

#include "platform/linux/x11/ClientProcess.h"
#include "platform/linux/x11/ClientWindow.h"
#include "platform/linux/x11/XProperty.h"

namespace moorline {

class XConnection;

/// All that was asked about one window, to be read after the same was asked about the others.
class PendingClientWindow final {
public:
    PendingClientWindow(const XConnection &connection, xcb_window_t window);

    /// To be called exactly once. Absent for a window that is gone.
    [[nodiscard]] std::optional<ClientWindow> read() const;

private:
    void readKind(ClientWindow &window) const;
    void readStates(ClientWindow &window) const;
    void readOwner(ClientWindow &window) const;
    void readStrut(ClientWindow &window) const;
    [[nodiscard]] bool readPlace(ClientWindow &window) const;

    const XConnection &m_connection;
    xcb_window_t m_window;
    xcb_get_window_attributes_cookie_t m_attributes;
    xcb_get_geometry_cookie_t m_geometry;
    xcb_translate_coordinates_cookie_t m_position;
    PendingProperty m_type;
    PendingProperty m_state;
    PendingProperty m_desktop;
    PendingProperty m_transientFor;
    PendingProperty m_class;
    PendingProperty m_applicationId;
    PendingProperty m_process;
    PendingClientProcess m_localProcess;
    PendingProperty m_frameExtents;
    PendingProperty m_shadowExtents;
    PendingProperty m_strutPartial;
    PendingProperty m_strut;
};

/// What kind the value of _NET_WM_WINDOW_TYPE makes a window; absent for an empty list, a program that does not say.
[[nodiscard]] std::optional<WindowKind> windowKind(const XConnection &connection, const QList<std::uint32_t> &types);

} // namespace moorline
