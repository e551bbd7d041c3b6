#include "freedesktop/TaskbarRule.h"

#include <algorithm>

namespace moorline {

QSet<XWindowId> taskbarWindows(const QList<WindowFacts> &windows)
{
    QSet<XWindowId> wanted;
    for (const WindowFacts &window : windows) {
        if (window.isOrdinary && !window.skipsTaskbar)
            wanted.insert(window.window);
    }
    const QHash<XWindowId, XWindowId> transientFor = transienceAmong(windows);
    QSet<XWindowId> shown;
    for (const XWindowId window : std::as_const(wanted)) {
        const QList<XWindowId> owners = ownersOf(window, transientFor);
        // The topmost of the owners that may be shown is shown.
        if (std::none_of(owners.begin(), owners.end(), [&](XWindowId owner) { return wanted.contains(owner); }))
            shown.insert(window);
    }
    return shown;
}

QList<XWindowId> ownersOf(XWindowId window, const QHash<XWindowId, XWindowId> &transientFor)
{
    QSet<XWindowId> seen{0, window};
    QList<XWindowId> owners;
    for (XWindowId owner = transientFor.value(window); !seen.contains(owner); owner = transientFor.value(owner)) {
        seen.insert(owner);
        owners.append(owner);
    }
    // Of a circle, nobody is the owner.
    const bool isCircle = !owners.isEmpty() && transientFor.value(owners.last()) == window;
    return isCircle ? QList<XWindowId>() : owners;
}

QHash<XWindowId, XWindowId> transienceAmong(const QList<WindowFacts> &windows)
{
    QHash<XWindowId, XWindowId> transientFor;
    for (const WindowFacts &window : windows) {
        if (window.transientFor != 0)
            transientFor.insert(window.window, window.transientFor);
    }
    return transientFor;
}

} // namespace moorline
