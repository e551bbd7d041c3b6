#include "theme/DevicePixels.h"

#include <QPainter>
#include <QtMath>
#include <algorithm>

namespace moorline {

qreal deviceScale(const QPainter &painter)
{
    const qreal scale = std::sqrt(std::abs(painter.deviceTransform().determinant()));
    return scale > 0 ? scale : 1;
}

QPointF snappedToPixels(const QPainter &painter, const QPointF &point)
{
    const QTransform toDevice = painter.deviceTransform();
    bool invertible = false;
    const QTransform fromDevice = toDevice.inverted(&invertible);
    if (!invertible)
        return point;
    const QPointF pixel = toDevice.map(point);
    return fromDevice.map(QPointF(std::round(pixel.x()), std::round(pixel.y())));
}

QRectF snappedToPixels(const QPainter &painter, const QRectF &rect)
{
    const qreal scale = deviceScale(painter);
    const auto wholePixels = [scale](qreal length) { return std::max(1.0, std::round(length * scale)) / scale; };
    return {snappedToPixels(painter, rect.topLeft()), QSizeF(wholePixels(rect.width()), wholePixels(rect.height()))};
}

} // namespace moorline
