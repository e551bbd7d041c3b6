#include "platform/linux/x11/WindowRequests.h"

#include "platform/linux/x11/XConnection.h"

#include <algorithm>

namespace moorline {

namespace {

constexpr std::uint32_t pagerSource = 2;

} // namespace

WindowRequests::WindowRequests(const XConnection &connection)
    : m_connection(connection)
{
}

void WindowRequests::switchToDesktop(std::uint32_t desktop, xcb_timestamp_t time) const
{
    send(m_connection.root(), m_connection.atom(XAtom::netCurrentDesktop), {desktop, time});
}

void WindowRequests::activate(xcb_window_t window, xcb_timestamp_t time) const
{
    send(window, m_connection.atom(XAtom::netActiveWindow), {pagerSource, time, XCB_WINDOW_NONE});
}

void WindowRequests::close(xcb_window_t window, xcb_timestamp_t time) const
{
    send(window, m_connection.atom(XAtom::netCloseWindow), {time, pagerSource});
}

void WindowRequests::restack(const QList<xcb_window_t> &windows) const
{
    for (const xcb_window_t window : windows)
        send(window, m_connection.atom(XAtom::netRestackWindow), {pagerSource, XCB_WINDOW_NONE, XCB_STACK_MODE_ABOVE});
}

void WindowRequests::placeAbove(const QList<xcb_window_t> &windows, xcb_window_t sibling) const
{
    for (const xcb_window_t window : windows) {
        if (window != sibling)
            requestPlaceAbove(window, sibling);
        sibling = window;
    }
    xcb_flush(m_connection.native());
}

QString WindowRequests::managerName() const
{
    const auto proof = m_connection.property(m_connection.root(), XAtom::netSupportingWmCheck).value(XCB_ATOM_WINDOW);
    return proof ? QString::fromUtf8(m_connection.property(*proof, XAtom::netWmName).bytes()) : QString();
}

bool WindowRequests::restacks() const
{
    return m_connection.property(m_connection.root(), XAtom::netSupported)
        .values(XCB_ATOM_ATOM)
        .contains(m_connection.atom(XAtom::netRestackWindow));
}

/// As ICCCM has it of clients whose window may be in a frame.
void WindowRequests::requestPlaceAbove(xcb_window_t window, xcb_window_t sibling) const
{
    xcb_configure_request_event_t event{};
    event.response_type = XCB_CONFIGURE_REQUEST;
    event.stack_mode = XCB_STACK_MODE_ABOVE;
    event.parent = m_connection.root();
    event.window = window;
    event.sibling = sibling;
    event.value_mask = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
    xcb_send_event(m_connection.native(), false, m_connection.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
}

bool WindowRequests::canBeAskedToClose(xcb_window_t window) const
{
    return m_connection.property(window, XAtom::wmProtocols)
        .values(XCB_ATOM_ATOM)
        .contains(m_connection.atom(XAtom::wmDeleteWindow));
}

void WindowRequests::send(xcb_window_t window, xcb_atom_t type, std::initializer_list<std::uint32_t> values) const
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    std::copy(values.begin(), values.end(), event.data.data32);
    xcb_send_event(m_connection.native(), false, m_connection.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
    xcb_flush(m_connection.native());
}

} // namespace moorline
