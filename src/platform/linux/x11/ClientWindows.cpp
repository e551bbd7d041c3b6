#include "platform/linux/x11/ClientWindows.h"

#include "platform/linux/x11/ClientWindowReader.h"
#include "platform/linux/x11/XConnection.h"

#include <algorithm>
#include <array>
#include <utility>

namespace moorline {

ClientWindows::ClientWindows(XConnection &connection)
    : m_connection(connection)
{
    connect(&connection, &XConnection::propertyChanged, this, &ClientWindows::noteProperty);
    connect(&connection, &XConnection::structureChanged, this, &ClientWindows::noteStructure);
    connect(&connection, &XConnection::shapeChanged, this, &ClientWindows::noteShape);
}

const ClientSnapshot &ClientWindows::snapshot()
{
    if (m_isCurrent)
        return m_snapshot;
    // Set first: whatever is reported from here on may have come too late for this reading.
    m_isCurrent = true;
    m_snapshot = ClientWindowReader(m_connection, m_watched).read();
    m_connection.reportSoon();
    m_known = {m_snapshot.windowManagerProof};
    for (const ClientWindow &window : m_snapshot.windows)
        m_known << window.window << window.frameWindow;
    m_watched &= m_known;
    return m_snapshot;
}

void ClientWindows::noteProperty(xcb_window_t window, xcb_atom_t name)
{
    if (window == m_connection.root() ? isRootProperty(name) : isWindowProperty(name))
        noteChange();
    if (isFact(name))
        Q_EMIT factsChanged();
}

void ClientWindows::noteStructure(const xcb_generic_event_t &event)
{
    switch (event.response_type) {
    case XCB_CONFIGURE_NOTIFY:
        // Tooltips, menus and the bar itself move all the time.
        if (m_known.contains(reinterpret_cast<const xcb_configure_notify_event_t &>(event).window))
            noteChange();
        break;
    case XCB_DESTROY_NOTIFY: {
        const xcb_window_t window = reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window;
        // The server may give its number to another window.
        m_watched.remove(window);
        if (m_known.contains(window)) {
            noteChange();
            Q_EMIT factsChanged();
        }
        break;
    }
    case XCB_CREATE_NOTIFY:
        break;
    default:
        noteChange();
    }
}

void ClientWindows::noteShape(xcb_window_t window)
{
    if (m_known.contains(window))
        noteChange();
}

void ClientWindows::noteChange()
{
    if (std::exchange(m_isCurrent, false))
        Q_EMIT changed();
}

bool ClientWindows::isRootProperty(xcb_atom_t name) const
{
    constexpr std::array relevant{XAtom::netActiveWindow, XAtom::netClientList, XAtom::netClientListStacking,
        XAtom::netCurrentDesktop, XAtom::netSupportingWmCheck};
    return std::any_of(relevant.begin(), relevant.end(), [&](XAtom atom) { return m_connection.atom(atom) == name; });
}

bool ClientWindows::isWindowProperty(xcb_atom_t name) const
{
    constexpr std::array relevant{XAtom::gtkApplicationId, XAtom::gtkFrameExtents, XAtom::netFrameExtents,
        XAtom::netSupportingWmCheck, XAtom::netWmDesktop, XAtom::netWmPid, XAtom::netWmState, XAtom::netWmStrut,
        XAtom::netWmStrutPartial, XAtom::netWmWindowType};
    return name == XCB_ATOM_WM_CLASS || name == XCB_ATOM_WM_TRANSIENT_FOR || name == XCB_ATOM_WM_CLIENT_MACHINE
        || std::any_of(relevant.begin(), relevant.end(), [&](XAtom atom) { return m_connection.atom(atom) == name; });
}

bool ClientWindows::isFact(xcb_atom_t name) const
{
    constexpr std::array facts{XAtom::netActiveWindow, XAtom::netClientList, XAtom::netSupportingWmCheck,
        XAtom::gtkApplicationId, XAtom::netWmPid, XAtom::netWmState, XAtom::netWmWindowType};
    return name == XCB_ATOM_WM_CLASS || name == XCB_ATOM_WM_TRANSIENT_FOR || name == XCB_ATOM_WM_CLIENT_MACHINE
        || std::any_of(facts.begin(), facts.end(), [&](XAtom atom) { return m_connection.atom(atom) == name; });
}

} // namespace moorline
