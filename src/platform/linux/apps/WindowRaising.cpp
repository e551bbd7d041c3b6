#include "platform/linux/apps/WindowRaising.h"

#include "freedesktop/ForwardPlan.h"
#include "platform/linux/x11/ClientWindow.h"
#include "platform/linux/x11/WindowRequests.h"

namespace moorline {

namespace {

QList<StackedWindow> stackOf(const ClientSnapshot &snapshot)
{
    QList<StackedWindow> stack;
    for (const ClientWindow &window : snapshot.windows) {
        stack.append({.window = window.window,
            .isManaged = window.isManaged,
            .isViewable = window.isViewable,
            .isAbove = window.isAbove,
            .isNormal = window.kind == WindowKind::normal});
    }
    return stack;
}

} // namespace

void raiseWithoutFocus(const QList<XWindowId> &windows, const ClientSnapshot &snapshot, const WindowRequests &requests)
{
    if (windows.isEmpty())
        return;
    switch (raiseManner({.name = requests.managerName(), .restacks = requests.restacks()})) {
    case RaiseManner::none:
        return;
    case RaiseManner::restack:
        return requests.restack(windows);
    case RaiseManner::placeAbove:
        return requests.placeAbove(windows, raiseBase(stackOf(snapshot)));
    }
}

} // namespace moorline
