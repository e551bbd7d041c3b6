#pragma once

#include "platform/Screens.h"

#include <QRectF>
#include <optional>

namespace moorline {

/// The screen the bar belongs to: the primary one, else the first; absent while there is none.
[[nodiscard]] std::optional<Screen> targetScreen(const QList<Screen> &screens);

/// The width the panel takes for content of this width on a screen of that width.
[[nodiscard]] qreal panelWidth(qreal contentWidth, qreal screenWidth);

/// The nearest frame that a window can have: no coordinate and no length beyond 16383 device pixels, and no length
/// below a point. `scale` is the screen's.
[[nodiscard]] QRectF possibleFrame(const QRectF &frame, qreal scale);

/// Where the panel stands when it shows. Without a screen only the size means anything.
[[nodiscard]] QRectF shownPanelFrame(const std::optional<Screen> &screen, QSizeF size, qreal bottomGap);
/// The same frame moved down until it is out of sight.
[[nodiscard]] QRectF hiddenPanelFrame(const std::optional<Screen> &screen, const QRectF &shown);

/// How high above the bottom edge of the screen the pointer is, and infinite on another one. Absent without a screen.
/// `pointer` is in the coordinates of the screen's frame.
[[nodiscard]] std::optional<qreal> pointerHeight(const std::optional<Screen> &screen, const QPointF &pointer);

/// Whether a pointer `height` above the bottom edge of the screen rests at the edge that calls the desktop's dock.
/// While the bar is hidden it has to leave a much higher zone.
[[nodiscard]] bool isAtDockEdge(qreal height, bool hidden);
/// Whether the bar stays out of a full-screen space with the pointer at that height: touching the edge lets it peek in,
/// and it stays while the pointer is over it.
[[nodiscard]] bool staysOutOfFullScreen(qreal height, bool hidden);

} // namespace moorline
