#pragma once

#include "freedesktop/DockPins.h"
#include "platform/DesktopDock.h"

#include <QStringList>

namespace moorline {

class DesktopDocks;

/// Whose pins are read.
enum class PinSource { plank, gnome, kde, xfce, cinnamon, budgie };

/// Those of the dock that concerns us first, then those of the panel that belongs to the desktop, by its names.
[[nodiscard]] QList<PinSource> pinSources(const std::optional<DesktopDock> &dock, const QStringList &desktopNames);

/// What is pinned to the desktop's own docks, from a few small files and settings. Whoever asks waits for them.
class PinnedApps final {
public:
    /// `docks` outlive it.
    PinnedApps(const DesktopDocks &docks, QStringList desktopNames);

    /// In the order in which the docks show them.
    [[nodiscard]] QList<DockPin> pins() const;

private:
    [[nodiscard]] QList<DockPin> pinsOf(PinSource source, const std::optional<DesktopDock> &dock) const;
    [[nodiscard]] QList<DockPin> ofPlank(const std::optional<DesktopDock> &dock) const;

    const DesktopDocks &m_docks;
    QStringList m_desktopNames;
};

} // namespace moorline
