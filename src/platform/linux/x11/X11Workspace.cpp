#include "platform/linux/x11/X11Workspace.h"

#include "platform/linux/x11/XConnection.h"

namespace moorline {

X11Workspace::X11Workspace(const XConnection &connection)
    : m_connection(connection)
{
    connect(&connection, &XConnection::propertyChanged, this, &X11Workspace::noteProperty);
}

void X11Workspace::noteProperty(xcb_window_t window, xcb_atom_t name)
{
    if (window != m_connection.root())
        return;
    if (name == m_connection.atom(XAtom::netCurrentDesktop))
        Q_EMIT activeSpaceChanged();
    else if (name == m_connection.atom(XAtom::netActiveWindow))
        Q_EMIT applicationActivated();
}

} // namespace moorline
