#pragma once

#include "platform/Workspace.h"

#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// Virtual desktops as spaces, the owner of the active window as the active application.
class X11Workspace final : public Workspace {
    Q_OBJECT
public:
    explicit X11Workspace(const XConnection &connection);

private:
    void noteProperty(xcb_window_t window, xcb_atom_t name);

    const XConnection &m_connection;
};

} // namespace moorline
