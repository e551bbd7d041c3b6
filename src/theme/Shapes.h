#pragma once

#include <QPainterPath>
#include <QRectF>

namespace moorline {

/// A rounded rectangle whose corners run into the straight edges without a jump in curvature.
[[nodiscard]] QPainterPath continuousRoundedRect(const QRectF &rect, qreal radius);

} // namespace moorline
