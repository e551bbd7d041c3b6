#pragma once

#include <QPointF>
#include <QRectF>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace moorline {

/// Device pixels per point where `painter` paints now. Never zero or less.
[[nodiscard]] qreal deviceScale(const QPainter &painter);
/// The point, in the painter's coordinates, moved to the nearest corner of a device pixel.
[[nodiscard]] QPointF snappedToPixels(const QPainter &painter, const QPointF &point);
/// The rectangle, in the painter's coordinates, with whole pixels at its top left corner and in its size; at least one
/// each way.
[[nodiscard]] QRectF snappedToPixels(const QPainter &painter, const QRectF &rect);

} // namespace moorline
