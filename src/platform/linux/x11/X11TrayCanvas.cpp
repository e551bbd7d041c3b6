#include "platform/linux/x11/X11TrayCanvas.h"

#include "platform/linux/x11/XConnection.h"

#include <QPainter>
#include <cstring>

namespace moorline {

namespace {

/// How pixels of that depth lie in memory, on the servers there are.
QImage::Format formatOf(std::uint8_t depth)
{
    switch (depth) {
    case 16:
        return QImage::Format_RGB16;
    case 24:
        return QImage::Format_RGB32;
    case 30:
        return QImage::Format_RGB30;
    case 32:
        return QImage::Format_ARGB32_Premultiplied;
    default:
        return QImage::Format_Invalid;
    }
}

/// Zero for a visual that no screen has.
std::uint8_t depthOf(xcb_connection_t *connection, xcb_visualid_t visual)
{
    for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection)); screen.rem > 0; xcb_screen_next(&screen)) {
        for (auto depth = xcb_screen_allowed_depths_iterator(screen.data); depth.rem > 0; xcb_depth_next(&depth)) {
            for (auto type = xcb_depth_visuals_iterator(depth.data); type.rem > 0; xcb_visualtype_next(&type)) {
                if (type.data->visual_id == visual)
                    return depth.data->depth;
            }
        }
    }
    return 0;
}

/// What lies under the picture: the tray's own background.
QImage background(const XConnection &connection, xcb_window_t window, QSize size, QImage::Format format)
{
    const auto width = static_cast<std::uint16_t>(size.width());
    const auto height = static_cast<std::uint16_t>(size.height());
    xcb_clear_area(connection.native(), false, window, 0, 0, width, height);
    const auto cookie = xcb_get_image(connection.native(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0, width, height, ~0U);
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection.native(), cookie, nullptr));
    QImage image(size, format);
    if (!reply || xcb_get_image_data_length(reply.get()) < image.sizeInBytes())
        return {};
    std::memcpy(image.bits(), xcb_get_image_data(reply.get()), static_cast<std::size_t>(image.sizeInBytes()));
    return image;
}

QImage transparent(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void put(const XConnection &connection, xcb_window_t window, std::uint8_t depth, const QImage &image)
{
    const xcb_gcontext_t context = xcb_generate_id(connection.native());
    xcb_create_gc(connection.native(), context, window, 0, nullptr);
    xcb_put_image(connection.native(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, context,
        static_cast<std::uint16_t>(image.width()), static_cast<std::uint16_t>(image.height()), 0, 0, 0, depth,
        static_cast<std::uint32_t>(image.sizeInBytes()), image.constBits());
    xcb_free_gc(connection.native(), context);
}

} // namespace

X11TrayVisual X11TrayVisual::of(const XConnection &connection, xcb_window_t tray)
{
    const xcb_atom_t name = connection.atom("_NET_SYSTEM_TRAY_VISUAL");
    const xcb_visualid_t asked = connection.request(tray, name).read().value(XCB_ATOM_VISUALID).value_or(0);
    if (const std::uint8_t depth = depthOf(connection.native(), asked); depth != 0)
        return {asked, depth};
    return {connection.rootVisual(), depthOf(connection.native(), connection.rootVisual())};
}

void paintInTray(
    const XConnection &connection, xcb_window_t window, std::uint8_t depth, QSize size, const QImage &picture)
{
    const QImage::Format format = formatOf(depth);
    if (format == QImage::Format_Invalid)
        return;
    QImage canvas = format == QImage::Format_ARGB32_Premultiplied ? transparent(size)
                                                                  : background(connection, window, size, format);
    if (canvas.isNull())
        return;
    QPainter painter(&canvas);
    painter.drawImage(QPoint((size.width() - picture.width()) / 2, (size.height() - picture.height()) / 2), picture);
    painter.end();
    put(connection, window, depth, canvas);
}

} // namespace moorline
