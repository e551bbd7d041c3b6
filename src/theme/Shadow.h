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

    /// Paints the shadow of `shape` (points, the painter's coordinates), also under the shape itself. Towards the edges
    /// of `room` it fades to nothing, so that a window as large as the room cuts nothing off visibly.
    void paint(QPainter &painter, const QPainterPath &shape, const QRectF &room);

private:
    [[nodiscard]] QImage render(qreal scale) const;
    [[nodiscard]] QImage blurredMask(qreal scale) const;

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
