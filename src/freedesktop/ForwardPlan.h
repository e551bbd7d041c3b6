#pragma once

#include "freedesktop/WindowFacts.h"

#include <QHash>
#include <QList>

namespace moorline {

/// What to ask of the window manager so that an application comes to the front, in the order of the members.
struct ForwardPlan {
    /// The desktop to switch to; absent where there is no need to.
    std::optional<quint32> desktop = std::nullopt;
    /// The windows to raise, none of which gets the focus.
    QList<XWindowId> raised = {};
    XWindowId activated = 0;

    bool operator==(const ForwardPlan &) const = default;
};

/// The window that was the active one last comes to the front, with the application's other windows on its desktop
/// below it. Minimised ones stay so, unless all are: then only the last active of them returns.
///
/// `windows` are those that a taskbar would show, from the bottom of the stack to its top; `lastActive` are those that
/// were the active one, the last of them first: a dialog counts for the window that `transientFor` says it is a dialog
/// of. Absent where there is no window.
[[nodiscard]] std::optional<ForwardPlan> planForward(const QList<WindowFacts> &windows,
    const QList<XWindowId> &lastActive, const QHash<XWindowId, XWindowId> &transientFor,
    const std::optional<quint32> &currentDesktop);

/// What a window manager says of itself.
struct ManagerFacts {
    /// Its name for people; empty where it says none.
    QString name = {};
    /// Whether it is said to obey _NET_RESTACK_WINDOW.
    bool restacks = false;

    bool operator==(const ManagerFacts &) const = default;
};

/// How windows are raised that shall not get the focus.
enum class RaiseManner {
    /// The window manager cannot.
    none,
    /// By _NET_RESTACK_WINDOW.
    restack,
    /// Each above another one, by a ConfigureRequest.
    placeAbove,
};

[[nodiscard]] RaiseManner raiseManner(const ManagerFacts &manager);

/// A window and its part in the stack.
struct StackedWindow {
    XWindowId window = 0;
    bool isManaged = true;
    bool isViewable = true;
    /// Kept above others.
    bool isAbove = false;
    /// Neither a dialog nor a dock nor anything else of a kind.
    bool isNormal = true;
};

/// The window above which others are raised, the topmost on the layer where most are. Zero where there is none.
/// `windows` come from the bottom of the stack to its top.
[[nodiscard]] XWindowId raiseBase(const QList<StackedWindow> &windows);

} // namespace moorline
