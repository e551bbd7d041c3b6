#include "system/SpaceProbe.h"

#include "platform/Screens.h"
#include "platform/WindowServer.h"

#include <QCoreApplication>
#include <QMetaType>
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

std::optional<QVariantMap> mainDisplay(const QVariantList &displays, const QString &uuid)
{
    if (displays.isEmpty())
        return std::nullopt;
    const auto main = std::find_if(displays.begin(), displays.end(), [&uuid](const QVariant &display) {
        const QVariant identifier = display.toMap().value(QStringLiteral("Display Identifier"));
        return identifier.typeId() == QMetaType::QString && identifier.toString() == uuid;
    });
    return (main == displays.end() ? displays.first() : *main).toMap();
}

std::optional<qint64> integer(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return value.toLongLong();
    default:
        return std::nullopt;
    }
}

bool isMenuBar(const WindowDescription &window, int menuLevel, qreal screenWidth)
{
    return (window.layer == menuLevel || window.layer == menuLevel + 1) && window.bounds
        && window.bounds->width() >= screenWidth - menuBarTolerance;
}

bool covers(const WindowDescription &window, qreal screenWidth, qreal top)
{
    return window.ownerProcess && *window.ownerProcess != QCoreApplication::applicationPid() && window.layer
        && *window.layer < lowestFloatingLayer && window.bounds && std::abs(window.bounds->x()) < tolerance
        && window.bounds->width() >= screenWidth - tolerance && window.bounds->y() <= top;
}

} // namespace

SpaceProbe::SpaceProbe(const WindowServer &windowServer)
    : m_windowServer(windowServer)
{
}

std::optional<bool> SpaceProbe::isActiveSpaceFullScreen() const
{
    const auto displays = m_windowServer.managedDisplaySpaces();
    const auto uuid = displays ? m_windowServer.mainDisplayUUID() : std::nullopt;
    const auto display = uuid ? mainDisplay(*displays, *uuid) : std::nullopt;
    if (!display)
        return std::nullopt;
    const auto type = integer(display->value(QStringLiteral("Current Space")).toMap().value(QStringLiteral("type")));
    return type ? std::optional(*type == fullScreenSpace) : std::nullopt;
}

bool SpaceProbe::looksFullScreen(const Screen &screen) const
{
    const auto windows = m_windowServer.onScreenWindows().value_or(QList<WindowDescription>());
    const int menuLevel = m_windowServer.level(WindowLevel::mainMenu);
    const qreal width = screen.frame.width();
    const qreal top = screen.safeAreaInsets.top() + tolerance;
    const auto menuBar = [&](const WindowDescription &window) { return isMenuBar(window, menuLevel, width); };
    const auto covering = [&](const WindowDescription &window) { return covers(window, width, top); };
    return std::none_of(windows.begin(), windows.end(), menuBar)
        && std::any_of(windows.begin(), windows.end(), covering);
}

} // namespace moorline
