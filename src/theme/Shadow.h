#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QPointF>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace moorline {

/// The blurred shadow of a shape, rendered once for each shape and scale and kept until either changes.
class Shadow {
public:
    /// `blurRadius` is twice the standard deviation of the blur; `offset` is in points, y growing downwards.
    Shadow(QColor color, qreal blurRadius, QPointF offset);

    /// Paints the shadow of `shape` (points, the painter's coordinates), also under the shape itself.
    void paint(QPainter &painter, const QPainterPath &shape);

private:
    [[nodiscard]] QImage render(const QPainterPath &shape, qreal scale) const;

    QColor m_color;
    qreal m_blurRadius;
    QPointF m_offset;
    QPainterPath m_shape;
    qreal m_scale = 0;
    QImage m_image;
};

} // namespace moorline
