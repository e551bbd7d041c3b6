#include "freedesktop/ForwardPlan.h"

#include "freedesktop/TaskbarRule.h"

#include <algorithm>

namespace moorline {

namespace {

/// The topmost where none was active yet.
const WindowFacts &lastActiveOf(const QList<WindowFacts> &windows, const QList<XWindowId> &lastActive,
    const QHash<XWindowId, XWindowId> &transientFor)
{
    for (const XWindowId active : lastActive) {
        const QList<XWindowId> meant = QList<XWindowId>{active} + ownersOf(active, transientFor);
        const auto found = std::find_if(
            windows.begin(), windows.end(), [&](const WindowFacts &window) { return meant.contains(window.window); });
        if (found != windows.end())
            return *found;
    }
    return windows.last();
}

} // namespace

std::optional<ForwardPlan> planForward(const QList<WindowFacts> &windows, const QList<XWindowId> &lastActive,
    const QHash<XWindowId, XWindowId> &transientFor, const std::optional<quint32> &currentDesktop)
{
    QList<WindowFacts> open = windows;
    open.removeIf([](const WindowFacts &window) { return window.isMinimised; });
    const QList<WindowFacts> &candidates = open.isEmpty() ? windows : open;
    if (candidates.isEmpty())
        return std::nullopt;

    const WindowFacts &main = lastActiveOf(candidates, lastActive, transientFor);
    ForwardPlan plan{.activated = main.window};
    if (main.desktop != currentDesktop)
        plan.desktop = main.desktop;
    const std::optional<quint32> desktop = main.desktop ? main.desktop : currentDesktop;
    for (const WindowFacts &window : std::as_const(open)) {
        const bool isThere = !window.desktop || !desktop || window.desktop == desktop;
        if (isThere && window.window != main.window)
            plan.raised.append(window.window);
    }
    return plan;
}

RaiseManner raiseManner(const ManagerFacts &manager)
{
    if (manager.restacks)
        return RaiseManner::restack;
    // Elsewhere such a request is one for the focus. Xfwm4 gives it to what is put above all, but not to what is put
    // above one.
    return manager.name == QLatin1StringView("Xfwm4") ? RaiseManner::placeAbove : RaiseManner::none;
}

XWindowId raiseBase(const QList<StackedWindow> &windows)
{
    const auto topmost = std::find_if(windows.crbegin(), windows.crend(), [](const StackedWindow &window) {
        return window.isManaged && window.isViewable && !window.isAbove && window.isNormal;
    });
    return topmost == windows.crend() ? 0 : topmost->window;
}

} // namespace moorline
