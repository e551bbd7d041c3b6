#include "chrome/PopupPlacement.h"

#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

/// Between the bar and what stands above it.
constexpr qreal barGap = 6;
/// Between the edges of the screen and what would reach over them.
constexpr qreal screenMargin = 4;

qreal distance(const QPointF &point, const QRectF &rect)
{
    const qreal x = std::max({rect.left() - point.x(), point.x() - rect.right(), 0.0});
    const qreal y = std::max({rect.top() - point.y(), point.y() - rect.bottom(), 0.0});
    return x + y;
}

} // namespace

std::optional<Screen> screenNearest(const QList<Screen> &screens, const QPointF &point)
{
    const auto nearest = std::min_element(screens.begin(), screens.end(),
        [&](const Screen &a, const Screen &b) { return distance(point, a.frame) < distance(point, b.frame); });
    return nearest == screens.end() ? std::nullopt : std::optional(*nearest);
}

QRectF popupFrame(const QSizeF &size, const QRectF &anchor, const QRectF &bar, const QRectF &screen)
{
    const QRectF room = screen.adjusted(screenMargin, screenMargin, -screenMargin, -screenMargin);
    const qreal width = std::min(size.width(), room.width());
    const qreal x = std::clamp(std::round(anchor.center().x() - width / 2), room.left(), room.right() - width);
    // With y growing upwards, the bottom of a QRectF is its upper edge.
    const qreal y = std::clamp(std::ceil(bar.bottom()) + barGap, room.top(), room.bottom());
    return {x, y, width, std::min(size.height(), room.bottom() - y)};
}

} // namespace moorline
