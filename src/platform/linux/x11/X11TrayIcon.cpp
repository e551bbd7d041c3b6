#include "platform/linux/x11/X11TrayIcon.h"

#include "platform/linux/x11/X11TrayCanvas.h"
#include "platform/linux/x11/XConnection.h"

#include <algorithm>
#include <array>

namespace moorline {

namespace {

/// Until the tray gives it the size it has for icons.
constexpr std::uint16_t firstSide = 24;
/// Larger than any panel has; what goes to the server in one piece is limited.
constexpr int largestSide = 128;
constexpr std::uint32_t requestDockOpcode = 0;
constexpr std::uint32_t embedVersion = 0;
constexpr std::uint32_t wantsToBeMapped = 1;

void setNumbers(const XConnection &connection, xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
    std::initializer_list<std::uint32_t> values)
{
    xcb_change_property(connection.native(), XCB_PROP_MODE_REPLACE, window, name, type, 32,
        static_cast<std::uint32_t>(values.size()), values.begin());
}

void setText(
    const XConnection &connection, xcb_window_t window, xcb_atom_t name, xcb_atom_t type, const QByteArray &text)
{
    xcb_change_property(connection.native(), XCB_PROP_MODE_REPLACE, window, name, type, 8,
        static_cast<std::uint32_t>(text.size()), text.constData());
}

} // namespace

X11TrayIcon::X11TrayIcon(XConnection &connection, const QString &name, Picture picture)
    : m_connection(connection)
    , m_name(name)
    , m_picture(std::move(picture))
    , m_selection(connection.atom("_NET_SYSTEM_TRAY_S" + QByteArray::number(connection.screenNumber())))
{
    connect(&connection, &XConnection::selectionOwnerChanged, this, [this](xcb_atom_t selection) {
        if (selection == m_selection)
            dock();
    });
    connect(&connection, &XConnection::structureChanged, this, &X11TrayIcon::follow);
    connect(&connection, &XConnection::ownWindowTold, this, &X11TrayIcon::hear);
    connection.watchSelection(m_selection);
    dock();
}

X11TrayIcon::~X11TrayIcon()
{
    undock();
}

void X11TrayIcon::dock()
{
    undock();
    const xcb_window_t tray = m_connection.selectionOwner(m_selection);
    if (tray != XCB_WINDOW_NONE) {
        createWindow(tray);
        describeWindow();
        requestDock(tray);
    }
    xcb_flush(m_connection.native());
    m_connection.reportSoon();
}

/// Also when the tray is gone, which may have left the window on the root.
void X11TrayIcon::undock()
{
    if (m_window != XCB_WINDOW_NONE)
        xcb_destroy_window(m_connection.native(), m_window);
    if (m_colors != XCB_NONE)
        xcb_free_colormap(m_connection.native(), m_colors);
    m_window = XCB_WINDOW_NONE;
    m_colors = XCB_NONE;
    xcb_flush(m_connection.native());
}

void X11TrayIcon::createWindow(xcb_window_t tray)
{
    const auto look = X11TrayVisual::of(m_connection, tray);
    m_depth = look.depth;
    m_size = {firstSide, firstSide};
    m_colors = xcb_generate_id(m_connection.native());
    xcb_create_colormap(m_connection.native(), XCB_COLORMAP_ALLOC_NONE, m_colors, m_connection.root(), look.visual);
    // A window of the tray's own kind shows the tray through where nothing is painted.
    const std::uint32_t mask = (look.hasAlpha() ? XCB_CW_BACK_PIXEL : XCB_CW_BACK_PIXMAP) | XCB_CW_BORDER_PIXEL
        | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    const std::array<std::uint32_t, 5> values{look.hasAlpha() ? 0U : std::uint32_t{XCB_BACK_PIXMAP_PARENT_RELATIVE}, 0,
        1,
        XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS
            | XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW,
        m_colors};
    m_window = xcb_generate_id(m_connection.native());
    xcb_create_window(m_connection.native(), look.depth, m_window, m_connection.root(), -1, -1, firstSide, firstSide, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, look.visual, mask, values.data());
}

void X11TrayIcon::describeWindow() const
{
    const QByteArray name = m_name.toUtf8();
    setText(m_connection, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, name);
    setText(m_connection, m_window, m_connection.atom("_NET_WM_NAME"), m_connection.atom(XAtom::utf8String), name);
    setText(m_connection, m_window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, name.toLower() + '\0' + name + '\0');
    const xcb_atom_t embedding = m_connection.atom("_XEMBED_INFO");
    setNumbers(m_connection, m_window, embedding, embedding, {embedVersion, wantsToBeMapped});
}

void X11TrayIcon::requestDock(xcb_window_t tray) const
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = tray;
    message.type = m_connection.atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDockOpcode;
    message.data.data32[2] = m_window;
    xcb_send_event(
        m_connection.native(), false, tray, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&message));
}

void X11TrayIcon::follow(const xcb_generic_event_t &event)
{
    if (event.response_type == XCB_CONFIGURE_NOTIFY) {
        const auto &change = reinterpret_cast<const xcb_configure_notify_event_t &>(event);
        // What has to be painted then is told by itself.
        if (change.window == m_window)
            m_size = {change.width, change.height};
    } else if (event.response_type == XCB_DESTROY_NOTIFY) {
        // With the tray that it was in.
        if (reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window == m_window)
            m_window = XCB_WINDOW_NONE;
    }
}

void X11TrayIcon::hear(const xcb_generic_event_t &event)
{
    if (m_window == XCB_WINDOW_NONE)
        return;
    if (event.response_type == XCB_EXPOSE) {
        const auto &expose = reinterpret_cast<const xcb_expose_event_t &>(event);
        if (expose.window == m_window && expose.count == 0)
            paint();
    } else if (event.response_type == XCB_BUTTON_PRESS) {
        press(reinterpret_cast<const xcb_button_press_event_t &>(event));
    } else if (reinterpret_cast<const xcb_enter_notify_event_t &>(event).event == m_window) {
        if (event.response_type == XCB_ENTER_NOTIFY)
            Q_EMIT pointerEntered();
        else
            Q_EMIT pointerLeft();
    }
}

void X11TrayIcon::paint() const
{
    const QSize size = m_size.boundedTo({largestSide, largestSide});
    paintInTray(m_connection, m_window, m_depth, size, m_picture(std::min(size.width(), size.height())));
    xcb_flush(m_connection.native());
    m_connection.reportSoon();
}

void X11TrayIcon::press(const xcb_button_press_event_t &event)
{
    if (event.event != m_window || (event.detail != XCB_BUTTON_INDEX_1 && event.detail != XCB_BUTTON_INDEX_3))
        return;
    // The press holds the pointer for this connection, while a menu needs it for Qt's.
    xcb_ungrab_pointer(m_connection.native(), event.time);
    const XReply<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(m_connection.native(), xcb_get_input_focus(m_connection.native()), nullptr));
    m_connection.reportSoon();
    Q_EMIT pressed();
}

} // namespace moorline
