#pragma once

#include <QPainterPath>
#include <QRegion>
#include <optional>
#include <xcb/xcb.h>

namespace moorline {

/// The pixels inside `path`, which is in points.
[[nodiscard]] QRegion rasterized(const QPainterPath &path, qreal scale);

/// The part of a window that takes the pointer, and the part that there is at all. Absent is the whole window.
class PanelShape final {
public:
    PanelShape(xcb_connection_t *connection, xcb_window_t window);

    /// In device pixels from the top left of the window. Nothing is sent for what is already so.
    void setInput(const std::optional<QRegion> &region);
    void setBounding(const std::optional<QRegion> &region);

private:
    xcb_connection_t *m_connection;
    xcb_window_t m_window;
    std::optional<QRegion> m_input;
    std::optional<QRegion> m_bounding;
};

} // namespace moorline
