#include "platform/linux/x11/X11Pointer.h"

#include "platform/linux/x11/X11Coordinates.h"
#include "platform/linux/x11/XConnection.h"

namespace moorline {

namespace {

/// Far from every edge that means something.
constexpr QPointF nowhere(0, 1e6);

XReply<xcb_query_pointer_reply_t> queryPointer(const XConnection &connection)
{
    return XReply<xcb_query_pointer_reply_t>(xcb_query_pointer_reply(
        connection.native(), xcb_query_pointer(connection.native(), connection.root()), nullptr));
}

} // namespace

X11Pointer::X11Pointer(const XConnection &connection)
    : m_connection(connection)
{
}

QPointF X11Pointer::location() const
{
    const auto reply = queryPointer(m_connection);
    return reply ? X11Coordinates::current().pointFromNative({reply->root_x, reply->root_y}) : nowhere;
}

Qt::MouseButtons X11Pointer::pressedButtons() const
{
    const auto reply = queryPointer(m_connection);
    Qt::MouseButtons buttons;
    buttons.setFlag(Qt::LeftButton, reply && (reply->mask & XCB_BUTTON_MASK_1) != 0);
    buttons.setFlag(Qt::MiddleButton, reply && (reply->mask & XCB_BUTTON_MASK_2) != 0);
    buttons.setFlag(Qt::RightButton, reply && (reply->mask & XCB_BUTTON_MASK_3) != 0);
    return buttons;
}

} // namespace moorline
