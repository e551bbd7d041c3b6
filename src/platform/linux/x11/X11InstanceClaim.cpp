#include "platform/linux/x11/X11InstanceClaim.h"

#include "platform/linux/x11/XConnection.h"

#include <string_view>

namespace moorline {

namespace {

xcb_window_t createWindow(const XConnection &connection)
{
    const xcb_window_t window = xcb_generate_id(connection.native());
    constexpr std::uint32_t overrideRedirect = 1;
    xcb_create_window(connection.native(), XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    return window;
}

xcb_atom_t intern(const XConnection &connection, std::string_view name)
{
    const auto cookie =
        xcb_intern_atom(connection.native(), false, static_cast<std::uint16_t>(name.size()), name.data());
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection.native(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// None when the server does not answer.
xcb_window_t ownerOf(const XConnection &connection, xcb_atom_t selection)
{
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection.native(), xcb_get_selection_owner(connection.native(), selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

} // namespace

X11InstanceClaim::X11InstanceClaim(const XConnection &connection)
    : m_connection(connection)
    , m_window(createWindow(connection))
{
}

X11InstanceClaim::~X11InstanceClaim()
{
    xcb_destroy_window(m_connection.native(), m_window);
    xcb_flush(m_connection.native());
}

bool X11InstanceClaim::take()
{
    const xcb_atom_t selection = intern(m_connection, "_MOORLINE_INSTANCE");
    // Two that start at once must not both find it free.
    xcb_grab_server(m_connection.native());
    const xcb_window_t owner = ownerOf(m_connection, selection);
    const bool isFree = owner == XCB_WINDOW_NONE || owner == m_window;
    if (isFree)
        xcb_set_selection_owner(m_connection.native(), m_window, selection, XCB_CURRENT_TIME);
    xcb_ungrab_server(m_connection.native());
    xcb_flush(m_connection.native());
    return isFree;
}

} // namespace moorline
