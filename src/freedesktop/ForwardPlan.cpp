#include "freedesktop/ForwardPlan.h"

#include <algorithm>

namespace moorline {

namespace {

/// The topmost where none was active yet.
const WindowFacts &lastActiveOf(const QList<WindowFacts> &windows, const QList<XWindowId> &lastActive)
{
    for (const XWindowId active : lastActive) {
        const auto found = std::find_if(
            windows.begin(), windows.end(), [&](const WindowFacts &window) { return window.window == active; });
        if (found != windows.end())
            return *found;
    }
    return windows.last();
}

} // namespace

std::optional<ForwardPlan> planForward(
    const QList<WindowFacts> &windows, const QList<XWindowId> &lastActive, const std::optional<quint32> &currentDesktop)
{
    QList<WindowFacts> open = windows;
    open.removeIf([](const WindowFacts &window) { return window.isMinimised; });
    const QList<WindowFacts> &candidates = open.isEmpty() ? windows : open;
    if (candidates.isEmpty())
        return std::nullopt;

    const WindowFacts &main = lastActiveOf(candidates, lastActive);
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

} // namespace moorline
