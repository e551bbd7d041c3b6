#include "OlderTray.h"

#include <array>
#include <cstring>

namespace moorline::test {

namespace {

constexpr std::uint8_t alphaDepth = 32;

template <typename T>
XReply<T> owned(T *reply)
{
    return XReply<T>(reply);
}

} // namespace

OlderTray::OlderTray(Kind kind, const QColor &background)
{
    int number = 0;
    m_connection.reset(xcb_connect(nullptr, &number));
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    createWindow(kind, background);
    if (kind == Kind::transparent) {
        const xcb_visualid_t visual = visualOf(alphaDepth);
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, atom("_NET_SYSTEM_TRAY_VISUAL"),
            XCB_ATOM_VISUALID, 32, 1, &visual);
    }
    xcb_set_selection_owner(
        m_connection.get(), m_window, atom("_NET_SYSTEM_TRAY_S" + QByteArray::number(number)), XCB_CURRENT_TIME);
    sync();
}

void OlderTray::createWindow(Kind kind, const QColor &background)
{
    const std::uint8_t depth = kind == Kind::transparent ? alphaDepth : m_screen->root_depth;
    const xcb_colormap_t colors = xcb_generate_id(m_connection.get());
    xcb_create_colormap(m_connection.get(), XCB_COLORMAP_ALLOC_NONE, colors, m_screen->root, visualOf(depth));
    const std::array<std::uint32_t, 4> values{background.rgba(), 0, 1, colors};
    m_window = xcb_generate_id(m_connection.get());
    xcb_create_window(m_connection.get(), depth, m_window, m_screen->root, 100, 100, 300, 60, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, visualOf(depth),
        XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values.data());
    xcb_map_window(m_connection.get(), m_window);
}

const QList<xcb_window_t> &OlderTray::asked()
{
    while (const auto event = owned(xcb_poll_for_event(m_connection.get()))) {
        const auto &message = reinterpret_cast<const xcb_client_message_event_t &>(*event);
        const bool isRequest = (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && message.format == 32
            && message.window == m_window && message.type == atom("_NET_SYSTEM_TRAY_OPCODE")
            && message.data.data32[1] == 0;
        if (isRequest)
            m_asked.append(message.data.data32[2]);
    }
    return m_asked;
}

void OlderTray::take(xcb_window_t window, const QRect &frame) const
{
    xcb_reparent_window(m_connection.get(), window, m_window, 0, 0);
    resize(window, frame);
    xcb_map_window(m_connection.get(), window);
    sync();
}

void OlderTray::resize(xcb_window_t window, const QRect &frame) const
{
    const std::array<std::uint32_t, 4> values{static_cast<std::uint32_t>(frame.x()),
        static_cast<std::uint32_t>(frame.y()), static_cast<std::uint32_t>(frame.width()),
        static_cast<std::uint32_t>(frame.height())};
    xcb_configure_window(m_connection.get(), window,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
    sync();
}

bool OlderTray::exists(xcb_window_t window) const
{
    return bool(owned(xcb_get_window_attributes_reply(
        m_connection.get(), xcb_get_window_attributes(m_connection.get(), window), nullptr)));
}

std::uint8_t OlderTray::depth(xcb_window_t window) const
{
    const auto reply =
        owned(xcb_get_geometry_reply(m_connection.get(), xcb_get_geometry(m_connection.get(), window), nullptr));
    return reply ? reply->depth : std::uint8_t{0};
}

QByteArray OlderTray::text(xcb_window_t window, const QByteArray &name) const
{
    const auto cookie =
        xcb_get_property(m_connection.get(), false, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 100);
    const auto reply = owned(xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    if (!reply)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get())};
}

QList<std::uint32_t> OlderTray::numbers(xcb_window_t window, const QByteArray &name) const
{
    const QByteArray bytes = text(window, name);
    QList<std::uint32_t> values(bytes.size() / 4);
    std::memcpy(values.data(), bytes.constData(), static_cast<std::size_t>(values.size()) * 4);
    return values;
}

QImage OlderTray::picture(xcb_window_t window) const
{
    const QRect area = frame(window);
    const auto cookie = xcb_get_image(m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
        static_cast<std::uint16_t>(area.width()), static_cast<std::uint16_t>(area.height()), ~0U);
    const auto reply = owned(xcb_get_image_reply(m_connection.get(), cookie, nullptr));
    if (!reply)
        return {};
    const auto format = reply->depth == alphaDepth ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    return QImage(xcb_get_image_data(reply.get()), area.width(), area.height(), format).copy();
}

QRect OlderTray::frame(xcb_window_t window) const
{
    const auto geometry =
        owned(xcb_get_geometry_reply(m_connection.get(), xcb_get_geometry(m_connection.get(), window), nullptr));
    const auto origin = owned(xcb_translate_coordinates_reply(
        m_connection.get(), xcb_translate_coordinates(m_connection.get(), window, m_screen->root, 0, 0), nullptr));
    return geometry && origin ? QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height) : QRect();
}

xcb_atom_t OlderTray::atom(const QByteArray &name) const
{
    const auto cookie =
        xcb_intern_atom(m_connection.get(), false, static_cast<std::uint16_t>(name.size()), name.constData());
    const auto reply = owned(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_visualid_t OlderTray::visualOf(std::uint8_t depth) const
{
    if (depth == m_screen->root_depth)
        return m_screen->root_visual;
    for (auto depths = xcb_screen_allowed_depths_iterator(m_screen); depths.rem > 0; xcb_depth_next(&depths)) {
        if (depths.data->depth == depth && depths.data->visuals_len > 0)
            return xcb_depth_visuals_iterator(depths.data).data->visual_id;
    }
    return 0;
}

void OlderTray::sync() const
{
    const auto reply =
        owned(xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
}

} // namespace moorline::test
