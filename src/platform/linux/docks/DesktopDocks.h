#pragma once

#include "platform/DesktopDock.h"
#include "platform/linux/glib/GSettingsGroup.h"

#include <QStringList>
#include <vector>

namespace moorline {

class DockWindows;
struct DockWindow;

/// The names in XDG_CURRENT_DESKTOP, such as "ubuntu" and "GNOME".
[[nodiscard]] QStringList currentDesktopNames();

/// The desktop's own docks, and the panels that stand in their place.
class DesktopDocks final {
public:
    /// `windows` is null when there is no X display; only GNOME's dock, which is no window, is found then.
    explicit DesktopDocks(const DockWindows *windows, const QStringList &desktopNames = currentDesktopNames());

    /// Those that there are now: GNOME's and Plank's first, then the panels from the lowest to the topmost.
    [[nodiscard]] QList<DesktopDock> docks() const;
    /// The one of them that the rule chooses.
    [[nodiscard]] std::optional<DesktopDockRule::Choice> concerningDock() const;

    /// What is in one of Plank's docks: its name and the files of its items, in their order.
    struct PlankItems {
        QString dock;
        QStringList files;
    };
    /// Absent for a dock that is none of Plank's that have settings.
    [[nodiscard]] std::optional<PlankItems> plankItems(const DesktopDock &dock) const;

    /// Makes it hide whenever the pointer is elsewhere. Both answer whether the dock took it; a plain panel takes
    /// neither.
    [[nodiscard]] bool makeHide(const DesktopDock &dock);
    [[nodiscard]] bool setRevealDelay(const DesktopDock &dock, double seconds);

private:
    [[nodiscard]] bool isGnomeDockEnabled() const;
    [[nodiscard]] DesktopDock gnomeDock() const;
    [[nodiscard]] DesktopDock::Hiding gnomeHiding() const;
    void followPlanksNames() const;
    /// All that are switched on. `windows` are theirs.
    [[nodiscard]] QList<DesktopDock> plankDocks(const QList<DockWindow> &windows) const;

    const DockWindows *m_windows;
    bool m_hasDockBySession = false;
    std::optional<GSettingsGroup> m_shell;
    std::optional<GSettingsGroup> m_gnomeDock;
    std::optional<GSettingsGroup> m_plank;
    /// Those that were switched on when it was last looked, and their settings.
    mutable QStringList m_plankNames;
    mutable std::vector<GSettingsGroup> m_plankDocks;
    mutable DesktopDockRule m_rule;
};

} // namespace moorline
