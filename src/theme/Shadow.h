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

    /// Paints the shadow of `shape` (points, the painter's coordinates), also under the shape itself. Outside of the
    /// shape it fades to nothing towards the edges of `room`, so that a window of that size cuts nothing off visibly.
    void paint(QPainter &painter, const QPainterPath &shape, const QRectF &room);

private:
    [[nodiscard]] QImage render(qreal scale) const;
    /// The shape alone, the corner of its bounds at `corner`, in pixels.
    [[nodiscard]] QImage silhouette(const QSize &size, const QPointF &corner, qreal scale) const;

    QColor m_color;
    qreal m_blurRadius;
    QPointF m_offset;
    QPainterPath m_shape;
    /// Relative to the top left corner of the shape's bounds.
    QRectF m_room;
    qreal m_scale = 0;
    QImage m_image;
};

} // namespace moorline
