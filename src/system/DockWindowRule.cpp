#include "system/DockWindowRule.h"

#include "platform/DesktopDock.h"

#include <QCoreApplication>
#include <algorithm>

namespace moorline {

namespace {

/// Lies crosswise on the screen and shows more there than a hidden one leaves.
bool showsCrosswise(const WindowDescription &window, const QRectF &screen)
{
    const bool isOwn = window.ownerProcess == QCoreApplication::applicationPid();
    if (window.kind != WindowKind::dock || isOwn || !window.bounds)
        return false;
    const QRectF visible = *window.bounds & screen;
    return visible.width() > callBackStrip && visible.height() > callBackStrip
        && window.bounds->width() >= window.bounds->height();
}

} // namespace

std::optional<QRectF> primaryScreenBounds(const QList<Screen> &screens)
{
    const auto primary = std::find_if(
        screens.begin(), screens.end(), [](const Screen &screen) { return screen.frame.topLeft() == QPointF(0, 0); });
    return primary == screens.end() ? std::nullopt : std::optional(QRectF(QPointF(0, 0), primary->frame.size()));
}

bool showsDockAlongBottom(const WindowDescription &window, const QRectF &screen)
{
    return showsCrosswise(window, screen) && window.bounds->bottom() >= screen.bottom() - callBackStrip;
}

bool showsDockAlongTop(const WindowDescription &window, const QRectF &screen)
{
    return showsCrosswise(window, screen) && window.bounds->top() <= screen.top() + callBackStrip;
}

} // namespace moorline
