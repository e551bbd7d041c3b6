#include "platform/linux/x11/FullScreenRule.h"

#include <algorithm>

namespace moorline {

namespace {

// Dialogs of dialogs; a ring of windows that name each other ends here, too.
constexpr int maximumTransience = 8;

const ClientWindow *find(const ClientSnapshot &snapshot, xcb_window_t window)
{
    const auto found = std::find_if(snapshot.windows.begin(), snapshot.windows.end(),
        [window](const ClientWindow &candidate) { return candidate.window == window; });
    return found == snapshot.windows.end() ? nullptr : &*found;
}

/// A full-screen window may span several screens.
bool isOn(const QRect &screen, const ClientWindow &window)
{
    return screen.contains(window.frame.center()) || window.frame.contains(screen);
}

bool belongsToFullScreen(const ClientSnapshot &snapshot, const ClientWindow *window)
{
    for (int step = 0; window && step < maximumTransience; ++step) {
        if (window->isFullScreen && isOnScreen(*window, snapshot))
            return true;
        window = window->transientFor == XCB_WINDOW_NONE ? nullptr : find(snapshot, window->transientFor);
    }
    return false;
}

const ClientWindow *topmostOn(const QRect &screen, const ClientSnapshot &snapshot, qint64 ownProcess)
{
    const auto found =
        std::find_if(snapshot.windows.rbegin(), snapshot.windows.rend(), [&](const ClientWindow &window) {
            return window.kind == ClientWindow::Kind::ordinary && window.process != ownProcess
                && isOnScreen(window, snapshot) && isOn(screen, window);
        });
    return found == snapshot.windows.rend() ? nullptr : &*found;
}

} // namespace

bool isOnScreen(const ClientWindow &window, const ClientSnapshot &snapshot)
{
    // The desktop of a window that is not managed is only what its program says.
    const bool isElsewhere =
        window.isManaged && window.desktop && snapshot.currentDesktop && window.desktop != snapshot.currentDesktop;
    return window.isViewable && !window.isHidden && !isElsewhere;
}

bool isFullScreenSpace(const ClientSnapshot &snapshot, const QRect &screen, qint64 ownProcess)
{
    const ClientWindow *active = find(snapshot, snapshot.activeWindow);
    const bool decides =
        active && active->process != ownProcess && isOnScreen(*active, snapshot) && isOn(screen, *active);
    return belongsToFullScreen(snapshot, decides ? active : topmostOn(screen, snapshot, ownProcess));
}

} // namespace moorline
