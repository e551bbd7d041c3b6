#pragma once

#include "platform/DesktopDock.h"
#include "platform/linux/glib/GSettingsGroup.h"

#include <QStringList>

namespace moorline {

class DockWindows;

/// The names in XDG_CURRENT_DESKTOP, such as "ubuntu" and "GNOME".
[[nodiscard]] QStringList currentDesktopNames();

/// The desktop's own docks, and the panels that stand in their place.
class DesktopDocks final {
public:
    /// `windows` is null when there is no X display; only GNOME's dock, which is no window, is found then.
    explicit DesktopDocks(const DockWindows *windows, const QStringList &desktopNames = currentDesktopNames());

    /// Those on the primary screen now: GNOME's and Plank first, then the panels from the lowest to the topmost.
    [[nodiscard]] QList<DesktopDock> docks() const;
    /// The one of them that the rule chooses.
    [[nodiscard]] std::optional<DesktopDockRule::Choice> concerningDock() const { return m_rule.choose(docks()); }

    /// Makes it hide whenever the pointer is elsewhere. Both answer whether the dock took it; a plain panel takes
    /// neither.
    [[nodiscard]] bool makeHide(const DesktopDock &dock);
    [[nodiscard]] bool setRevealDelay(const DesktopDock &dock, double seconds);

private:
    [[nodiscard]] bool isGnomeDockEnabled() const;
    [[nodiscard]] DesktopDock gnomeDock() const;
    [[nodiscard]] DesktopDock::Hiding gnomeHiding() const;
    [[nodiscard]] DesktopDock plankDock() const;

    const DockWindows *m_windows;
    bool m_hasDockBySession = false;
    std::optional<GSettingsGroup> m_shell;
    std::optional<GSettingsGroup> m_gnomeDock;
    std::optional<GSettingsGroup> m_plankDock;
    mutable DesktopDockRule m_rule;
};

} // namespace moorline
