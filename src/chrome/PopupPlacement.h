#pragma once

#include "platform/Screens.h"

#include <QRectF>
#include <optional>

namespace moorline {

/// The screen that a point is on or, beyond all of them, next to; absent while there is none.
[[nodiscard]] std::optional<Screen> screenNearest(const QList<Screen> &screens, const QPointF &point);

/// Where a window of `size` stands that belongs to `anchor`: centred on it, above everything of the bar, inside the
/// screen. Smaller than asked for where there is no room. All in points, origin at the bottom left of the primary
/// screen.
[[nodiscard]] QRectF popupFrame(const QSizeF &size, const QRectF &anchor, const QRectF &bar, const QRectF &screen);

} // namespace moorline
