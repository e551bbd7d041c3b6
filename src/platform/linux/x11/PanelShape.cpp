#include "platform/linux/x11/PanelShape.h"

#include <QTransform>
#include <vector>
#include <xcb/shape.h>

namespace moorline {

namespace {

xcb_rectangle_t toNative(const QRect &rect)
{
    return {static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
        static_cast<std::uint16_t>(rect.width()), static_cast<std::uint16_t>(rect.height())};
}

void send(xcb_connection_t *connection, xcb_window_t window, xcb_shape_sk_t kind, const std::optional<QRegion> &region)
{
    if (region) {
        std::vector<xcb_rectangle_t> rectangles;
        for (const QRect &rect : *region)
            rectangles.push_back(toNative(rect));
        xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, window, 0, 0,
            static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
    } else {
        xcb_shape_mask(connection, XCB_SHAPE_SO_SET, kind, window, 0, 0, XCB_PIXMAP_NONE);
    }
    xcb_flush(connection);
}

} // namespace

QRegion rasterized(const QPainterPath &path, qreal scale)
{
    QRegion region;
    const QTransform toPixels = QTransform::fromScale(scale, scale);
    for (const QPolygonF &part : path.toFillPolygons(toPixels))
        region += QRegion(part.toPolygon(), path.fillRule());
    return region;
}

PanelShape::PanelShape(xcb_connection_t *connection, xcb_window_t window)
    : m_connection(connection)
    , m_window(window)
{
}

void PanelShape::setInput(const std::optional<QRegion> &region)
{
    if (region == m_input)
        return;
    m_input = region;
    send(m_connection, m_window, XCB_SHAPE_SK_INPUT, region);
}

void PanelShape::setBounding(const std::optional<QRegion> &region)
{
    if (region == m_bounding)
        return;
    m_bounding = region;
    send(m_connection, m_window, XCB_SHAPE_SK_BOUNDING, region);
}

} // namespace moorline
