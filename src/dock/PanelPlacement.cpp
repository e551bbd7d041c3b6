#include "dock/PanelPlacement.h"

#include "dock/BarMetrics.h"

#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

constexpr qreal edgeZone = 4;
constexpr qreal leavingZone = 96;
constexpr qreal peekZone = 102;
/// How far below the screen the top of a hidden panel is.
constexpr qreal hiddenDepth = 4;

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

QRectF shownPanelFrame(const std::optional<Screen> &screen, QSizeF size, qreal bottomGap)
{
    if (!screen)
        return {QPointF(0, 0), size};
    const qreal x = std::round(screen->frame.center().x() - size.width() / 2);
    const qreal y = std::round(bottomGap + screen->frame.y() - BarMetrics::panelMargin);
    return {QPointF(x, y), size};
}

QRectF hiddenPanelFrame(const std::optional<Screen> &screen, const QRectF &shown)
{
    const qreal screenBottom = screen ? screen->frame.y() : 0;
    return {shown.x(), screenBottom - shown.height() - hiddenDepth, shown.width(), shown.height()};
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
