#include "theme/Shapes.h"

#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

/// How much further than its radius a corner reaches into the edges when there is room.
constexpr qreal fullSmoothing = 0.6;

/// One corner: a circular arc in the middle, and on each side a curve along which the curvature grows from the edge's
/// none.
struct Corner {
    Corner(qreal radius, qreal room);

    /// Along each edge, from where the edge stops being straight to the tip of the sharp corner.
    qreal reach;
    qreal arcSpan;
    /// The control points of the easing curves, as distances along the edge and, the last one, away from it.
    qreal first;
    qreal second;
    qreal along;
    qreal away;
    /// Of the arc's control points, split along and across the edge.
    QPointF handle;
};

Corner::Corner(qreal radius, qreal room)
    : reach(std::min((1 + fullSmoothing) * radius, room))
{
    const qreal smoothing = std::min(fullSmoothing, room / radius - 1);
    const qreal easingAngle = M_PI_4 * smoothing;
    const qreal arcAngle = M_PI_2 - 2 * easingAngle;
    arcSpan = std::sin(arcAngle / 2) * radius * M_SQRT2;
    const qreal slope = std::tan(easingAngle / 2);
    const qreal tangent = radius * slope;
    const qreal bend = tangent * std::cos(easingAngle);
    away = tangent * std::sin(easingAngle);
    along = reach - arcSpan - away;
    second = along - bend;
    // This far apart the easing curve ends with just the arc's curvature.
    first = second - 0.75 * tangent * (1 + slope * slope);
    const qreal handleLength = 4.0 / 3 * std::tan(arcAngle / 4) * radius;
    handle = QPointF(std::cos(easingAngle), std::sin(easingAngle)) * handleLength;
}

/// Adds the corner whose sharp tip is `tip`, entered in the direction `in` and left in the direction `out`.
void addCorner(QPainterPath &path, const Corner &corner, QPointF tip, QPointF in, QPointF out)
{
    const auto at = [&](qreal x, qreal y) { return tip + (x - corner.reach) * in + y * out; };
    const QPointF arcStart(corner.along, corner.away);
    const QPointF arcEnd = arcStart + QPointF(corner.arcSpan, corner.arcSpan);
    path.lineTo(at(0, 0));
    path.cubicTo(at(corner.first, 0), at(corner.second, 0), at(arcStart.x(), arcStart.y()));
    path.cubicTo(at(arcStart.x() + corner.handle.x(), arcStart.y() + corner.handle.y()),
        at(arcEnd.x() - corner.handle.y(), arcEnd.y() - corner.handle.x()), at(arcEnd.x(), arcEnd.y()));
    path.cubicTo(at(corner.reach, corner.reach - corner.second), at(corner.reach, corner.reach - corner.first),
        at(corner.reach, corner.reach));
}

} // namespace

QPainterPath continuousRoundedRect(const QRectF &rect, qreal radius)
{
    QPainterPath path;
    if (rect.isEmpty())
        return path;
    const qreal room = std::min(rect.width(), rect.height()) / 2;
    if (radius <= 0) {
        path.addRect(rect);
        return path;
    }
    const Corner corner(std::min(radius, room), room);
    constexpr QPointF right(1, 0);
    constexpr QPointF down(0, 1);
    path.moveTo(rect.left() + corner.reach, rect.top());
    addCorner(path, corner, rect.topRight(), right, down);
    addCorner(path, corner, rect.bottomRight(), down, -right);
    addCorner(path, corner, rect.bottomLeft(), -right, -down);
    addCorner(path, corner, rect.topLeft(), -down, right);
    path.closeSubpath();
    return path;
}

} // namespace moorline
