#include "system/SystemDock.h"

#include "platform/Preferences.h"
#include "platform/SystemDockControl.h"
#include "platform/SystemSettings.h"
#include "platform/WindowServer.h"

#include <algorithm>

namespace moorline {

namespace {

const QString domainName = QStringLiteral("com.apple.dock");
const QString ownerName = QStringLiteral("Dock");

/// A dock that cannot be asked never hides.
bool autoHides(const Preferences &preferences)
{
    const auto domain = preferences.open(domainName);
    return domain && domain->value(QStringLiteral("autohide")).toBool();
}

} // namespace

SystemDock::SystemDock(const Preferences &preferences, const WindowServer &windowServer, SystemDockControl &control,
    SystemSettings &settings)
    : m_preferences(preferences)
    , m_windowServer(windowServer)
    , m_control(control)
    , m_settings(settings)
{
}

SystemDock::Orientation SystemDock::orientation() const
{
    const auto domain = m_preferences.open(domainName);
    const QString edge = domain ? domain->value(QStringLiteral("orientation")).toString() : QString();
    if (edge == QLatin1StringView("left"))
        return Orientation::left;
    if (edge == QLatin1StringView("right"))
        return Orientation::right;
    return Orientation::bottom;
}

bool SystemDock::conflictsWithDockBar() const
{
    return orientation() == Orientation::bottom && !autoHides(m_preferences);
}

bool SystemDock::isRevealed() const
{
    if (!autoHides(m_preferences))
        return true;
    const auto windows = m_windowServer.onScreenWindows().value_or(QList<WindowDescription>());
    const int dockLevel = m_windowServer.level(WindowLevel::dock);
    return std::any_of(windows.begin(), windows.end(), [dockLevel](const WindowDescription &window) {
        return window.ownerName == ownerName && window.layer == dockLevel;
    });
}

QCoro::Task<> SystemDock::enableAutoHide()
{
    // Adapters live as long as the program, so this one may be used after the wait, unlike the dock itself.
    SystemSettings &settings = m_settings;
    if (!co_await m_control.enableAutoHide())
        settings.open(SettingsPane::desktopAndDock);
}

QCoro::Task<bool> SystemDock::setAutoHideDelay(double seconds)
{
    return m_control.setRevealDelay(seconds);
}

} // namespace moorline
