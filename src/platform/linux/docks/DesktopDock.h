#pragma once

#include "platform/linux/glib/GSettingsGroup.h"

#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>
#include <xcb/xcb.h>

namespace moorline {

class DockWindows;
struct DockWindow;

/// The names in XDG_CURRENT_DESKTOP, such as "ubuntu" and "GNOME".
[[nodiscard]] QStringList currentDesktopNames();

/// The desktop's own dock, or the panel that stands in its place.
class DesktopDock final {
public:
    enum class Kind { none, gnome, plank, panel };
    enum class Edge { bottom, left, right, top };

    struct State {
        Kind kind = Kind::none;
        Edge edge = Edge::bottom;
        bool hides = true;
        /// Seconds the pointer has to rest before the dock is revealed; absent where the dock has no such setting.
        std::optional<double> revealDelay = std::nullopt;
        /// The program behind a dock that is a window, as it names itself in its window class, in lower case.
        QString program = {};

        bool operator==(const State &) const = default;
    };

    /// `windows` is null when there is no X display; only GNOME's dock, which is no window, is found then.
    explicit DesktopDock(const DockWindows *windows, const QStringList &desktopNames = currentDesktopNames());

    /// What holds now. Of several docks, the one at the bottom that does not hide.
    [[nodiscard]] State state() const;

    /// Both answer whether the dock took it. A plain panel takes neither.
    [[nodiscard]] bool enableAutoHide();
    [[nodiscard]] bool setRevealDelay(double seconds);

private:
    [[nodiscard]] bool isGnomeDockEnabled() const;
    [[nodiscard]] bool isPlankRunning() const;
    [[nodiscard]] std::optional<State> gnomeDock() const;
    [[nodiscard]] std::optional<State> plankDock() const;
    [[nodiscard]] std::optional<State> panel() const;
    /// The edge of the primary screen that a panel always reserves.
    [[nodiscard]] std::optional<Edge> reservedEdge(const DockWindow &window) const;
    [[nodiscard]] QList<DockWindow> otherPanels() const;
    void rememberHidingPanels(const QList<DockWindow> &panels) const;

    const DockWindows *m_windows;
    bool m_hasDockBySession = false;
    std::optional<GSettingsGroup> m_shell;
    std::optional<GSettingsGroup> m_gnomeDock;
    std::optional<GSettingsGroup> m_plankDock;
    /// Panels that were once seen tucked away. While one shows itself it reserves as much as one that never hides.
    mutable QSet<xcb_window_t> m_hidingPanels;
};

} // namespace moorline
