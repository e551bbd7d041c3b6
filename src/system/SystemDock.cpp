#include "system/SystemDock.h"

#include "platform/Preferences.h"
#include "platform/Screens.h"
#include "platform/SystemDockControl.h"
#include "platform/SystemSettings.h"
#include "platform/WindowServer.h"
#include "system/DockWindowRule.h"

#include <QMetaType>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

const QString domainName = QStringLiteral("com.apple.dock");
const QString ownerName = QStringLiteral("Dock");

/// A preference that was written as text counts as the system's own preferences read it: "NO" is false, and so is
/// whatever does not begin as a yes, a true, or a number other than zero does.
bool isTrue(const QVariant &value)
{
    if (value.typeId() != QMetaType::QString)
        return value.toBool();
    static const QRegularExpression yes(QStringLiteral("^\\s*(?:[+-]?0*[1-9]|[YyTt])"));
    return yes.match(value.toString()).hasMatch();
}

/// A dock that cannot be asked never hides.
bool autoHides(const Preferences &preferences)
{
    const auto domain = preferences.open(domainName);
    return domain && isTrue(domain->value(QStringLiteral("autohide")));
}

} // namespace

SystemDock::SystemDock(const Preferences &preferences, const WindowServer &windowServer, const Screens &screens,
    SystemDockControl &control, SystemSettings &settings)
    : m_preferences(preferences)
    , m_windowServer(windowServer)
    , m_screens(screens)
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
    const auto screen = primaryScreenBounds(m_screens.screens());
    return std::any_of(windows.begin(), windows.end(), [&](const WindowDescription &window) {
        return window.layer == dockLevel
            && (window.ownerName == ownerName || (screen && showsDockAlongBottom(window, *screen)));
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
    if (!std::isfinite(seconds) || seconds < 0)
        co_return false;
    co_return co_await m_control.setRevealDelay(seconds);
}

} // namespace moorline
