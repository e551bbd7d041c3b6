#include "system/SpaceProbe.h"

#include "platform/WindowServer.h"
#include "system/DockWindowRule.h"
#include "system/FullScreenRule.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

/// The window server's type of a space that one application fills.
constexpr int fullScreenSpace = 4;
/// Windows on this layer and above float over the others and say nothing about a full screen.
constexpr int lowestFloatingLayer = 20;
/// How far an edge may be off and still count as at the screen's.
constexpr qreal tolerance = 2;
constexpr qreal menuBarTolerance = 4;

std::optional<DisplaySpace> mainDisplay(const QList<DisplaySpace> &displays, const QString &uuid)
{
    if (displays.isEmpty())
        return std::nullopt;
    const auto main = std::find_if(displays.begin(), displays.end(),
        [&uuid](const DisplaySpace &display) { return display.displayIdentifier == uuid; });
    return main == displays.end() ? displays.first() : *main;
}

bool isMenuBar(const WindowDescription &window, int menuLevel, const QSizeF &screen)
{
    const bool isInItsPlace = window.layer == menuLevel || window.layer == menuLevel + 1
        || showsDockAlongTop(window, QRectF(QPointF(0, 0), screen));
    return isInItsPlace && window.bounds && window.bounds->width() >= screen.width() - menuBarTolerance;
}

bool covers(const WindowDescription &window, qreal screenWidth, qreal top)
{
    return window.ownerProcess && *window.ownerProcess != QCoreApplication::applicationPid() && window.layer
        && *window.layer < lowestFloatingLayer && window.bounds && std::abs(window.bounds->x()) < tolerance
        && window.bounds->width() >= screenWidth - tolerance && window.bounds->y() <= top;
}

bool windowsLookFullScreen(const QList<WindowDescription> &windows, int menuLevel, const Screen &screen)
{
    const qreal width = screen.frame.width();
    const qreal top = screen.safeAreaInsets.top() + tolerance;
    const auto menuBar = [&](const WindowDescription &window) {
        return isMenuBar(window, menuLevel, screen.frame.size());
    };
    const auto covering = [&](const WindowDescription &window) { return covers(window, width, top); };
    return std::none_of(windows.begin(), windows.end(), menuBar)
        && std::any_of(windows.begin(), windows.end(), covering);
}

} // namespace

SpaceProbe::SpaceProbe(const WindowServer &windowServer)
    : m_windowServer(windowServer)
{
}

bool SpaceProbe::isFullScreen(const std::optional<Screen> &screen) const
{
    if (const auto known = isActiveSpaceFullScreen())
        return *known;
    if (!screen)
        return false;
    const auto windows = m_windowServer.onScreenWindows().value_or(QList<WindowDescription>());
    const QRectF place(QPointF(0, 0), screen->frame.size());
    return belongsToFullScreenWindow(windows, place, QCoreApplication::applicationPid())
        .value_or(windowsLookFullScreen(windows, m_windowServer.level(WindowLevel::mainMenu), *screen));
}

std::optional<bool> SpaceProbe::isActiveSpaceFullScreen() const
{
    const auto displays = m_windowServer.managedDisplaySpaces();
    const auto uuid = displays ? m_windowServer.mainDisplayUUID() : std::nullopt;
    const auto display = uuid ? mainDisplay(*displays, *uuid) : std::nullopt;
    if (!display || !display->currentSpaceType)
        return std::nullopt;
    return *display->currentSpaceType == fullScreenSpace;
}

bool SpaceProbe::looksFullScreen(const Screen &screen) const
{
    const auto windows = m_windowServer.onScreenWindows().value_or(QList<WindowDescription>());
    return windowsLookFullScreen(windows, m_windowServer.level(WindowLevel::mainMenu), screen);
}

} // namespace moorline
