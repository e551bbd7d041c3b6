#pragma once

#include <QList>
#include <QMarginsF>
#include <QRectF>
#include <QSet>
#include <QString>
#include <QVariant>
#include <optional>

namespace moorline {

/// What is left of a dock that hides, to call it back by: a strip of at most this many points. One that shows, or
/// reserves, no more is hidden.
inline constexpr qreal callBackStrip = 8;

/// One of the docks and panels that a desktop may have several of, as its settings and its windows tell.
struct DesktopDock {
    /// By whose settings it can be changed.
    enum class Kind { gnome, plank, panel };
    enum class Edge { bottom, left, right, top };
    enum class Hiding {
        never,
        /// From windows that come to lie under it. On an empty desktop it stays.
        fromWindows,
        /// Whenever the pointer is elsewhere.
        byItself,
    };

    Kind kind = Kind::panel;
    /// Names it among the others, for as long as it is there.
    quint64 id = 0;
    /// Where it lies, in points from the top left of the primary screen. Absent for one that has no window of its own:
    /// that is drawn on the primary screen.
    std::optional<QRectF> frame = std::nullopt;
    /// The edge of its screen that it lies along, and how it hides. Absent for a panel that has no such settings, of
    /// which only what it reserves tells.
    std::optional<Edge> edge = std::nullopt;
    std::optional<Hiding> hiding = std::nullopt;
    /// What it keeps of its screen's edges, in points.
    QMarginsF reserved = {};
    /// Seconds the pointer has to rest before it is revealed; absent where it has no such setting.
    std::optional<double> revealDelay = std::nullopt;
    /// The program behind a dock that is a window, as it names itself in its window class, in lower case.
    QString program = {};

    bool operator==(const DesktopDock &) const = default;
};

/// Says which of several docks is "the" dock to the bar, and tells of it in the words of "com.apple.dock".
class DesktopDockRule final {
public:
    struct Choice {
        DesktopDock dock;
        DesktopDock::Edge edge = DesktopDock::Edge::bottom;
        bool hides = true;

        bool operator==(const Choice &) const = default;
    };

    /// Of those on the primary screen the one that lies where the bar is for good; else the first that has settings;
    /// else the first that reserves an edge. `docks` is all there are now, in the desktop's own order, and `screen` the
    /// primary screen in the coordinates of their frames. A panel that was ever seen tucked away counts as hiding, also
    /// while it shows itself and reserves as much as one that never hides.
    [[nodiscard]] std::optional<Choice> choose(const QList<DesktopDock> &docks, const QRectF &screen);

private:
    [[nodiscard]] Choice judged(const DesktopDock &dock) const;
    void rememberTuckedAway(const QList<DesktopDock> &docks);

    QSet<quint64> m_hidingPanels;
};

/// "orientation", "autohide" and, where the dock has it, "autohide-delay"; invalid for any other key. Where there is no
/// dock, one that hides at the bottom is as good as none.
[[nodiscard]] QVariant dockPreference(const std::optional<DesktopDockRule::Choice> &dock, const QString &key);

} // namespace moorline
