#include "dock/PanelPlacement.h"

#include "dock/BarMetrics.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace moorline {

namespace {

constexpr qreal edgeZone = 4;
constexpr qreal leavingZone = 96;
constexpr qreal peekZone = 102;
/// How far below the screen the top of a hidden panel is.
constexpr qreal hiddenDepth = 4;

/// What windowing systems and Qt count window coordinates up to, in device pixels.
constexpr qreal maximumLength = 16383;

/// Also of what is no number.
qreal clamped(qreal value, qreal minimum, qreal maximum)
{
    return std::isnan(value) ? minimum : std::clamp(value, minimum, maximum);
}

} // namespace

std::optional<Screen> targetScreen(const QList<Screen> &screens)
{
    const auto primary = std::find_if(
        screens.begin(), screens.end(), [](const Screen &screen) { return screen.frame.topLeft() == QPointF(0, 0); });
    if (primary != screens.end())
        return *primary;
    return screens.isEmpty() ? std::nullopt : std::optional(screens.first());
}

qreal panelWidth(qreal contentWidth, qreal screenWidth)
{
    const qreal widest = std::round(screenWidth - BarMetrics::screenSideMargins);
    return std::round(std::min(std::max(contentWidth, BarMetrics::minimumPanelWidth), widest));
}

QRectF possibleFrame(const QRectF &frame, qreal scale)
{
    const qreal limit = std::floor(maximumLength / scale);
    return {clamped(frame.x(), -limit, limit), clamped(frame.y(), -limit, limit), clamped(frame.width(), 1, limit),
        clamped(frame.height(), 1, limit)};
}

QRectF shownPanelFrame(const std::optional<Screen> &screen, QSizeF size, qreal bottomGap)
{
    if (!screen)
        return {QPointF(0, 0), size};
    const qreal x = std::round(screen->frame.center().x() - size.width() / 2);
    const qreal y = std::round(bottomGap + screen->frame.y() - BarMetrics::panelMargin);
    return possibleFrame({QPointF(x, y), size}, screen->scale);
}

QRectF hiddenPanelFrame(const std::optional<Screen> &screen, const QRectF &shown)
{
    const qreal screenBottom = screen ? screen->frame.y() : 0;
    return {shown.x(), screenBottom - shown.height() - hiddenDepth, shown.width(), shown.height()};
}

std::optional<qreal> pointerHeight(const std::optional<Screen> &screen, const QPointF &pointer)
{
    if (!screen)
        return std::nullopt;
    const qreal height = pointer.y() - screen->frame.y();
    // The bottom edge of another screen is not ours, and nor is the screen below.
    const bool isOnScreen = height >= 0 && pointer.x() >= screen->frame.left() && pointer.x() <= screen->frame.right();
    return isOnScreen ? height : std::numeric_limits<qreal>::infinity();
}

bool isAtDockEdge(qreal height, bool hidden)
{
    return height < (hidden ? leavingZone : edgeZone);
}

bool staysOutOfFullScreen(qreal height, bool hidden)
{
    return height >= (hidden ? edgeZone : peekZone);
}

} // namespace moorline
