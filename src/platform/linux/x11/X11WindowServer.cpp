#include "platform/linux/x11/X11WindowServer.h"

#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/X11Coordinates.h"

namespace moorline {

namespace {

constexpr int normalLayer = 0;
constexpr int floatingLayer = 3;
constexpr int dockLayer = 20;
constexpr int mainMenuLayer = 24;

/// Whether the window is to be seen on the current virtual desktop.
bool isOnScreen(const ClientWindow &window, const ClientSnapshot &snapshot)
{
    // The desktop of a window that is not managed is only what its program says.
    const bool isElsewhere =
        window.isManaged && window.desktop && snapshot.currentDesktop && window.desktop != snapshot.currentDesktop;
    return window.isViewable && !window.isHidden && !isElsewhere;
}

int layerOf(const ClientWindow &window)
{
    if (window.kind == WindowKind::dock)
        return dockLayer;
    return window.isAbove ? floatingLayer : normalLayer;
}

WindowDescription describe(
    const ClientWindow &window, const ClientSnapshot &snapshot, const X11Coordinates &coordinates)
{
    const QRect place = window.kind == WindowKind::dock ? window.reachableFrame : window.frame;
    WindowDescription description{.ownerName = window.windowClass,
        .ownerProcess = window.process,
        .layer = layerOf(window),
        .bounds = coordinates.windowBoundsFromNative(place),
        .id = window.window,
        .kind = window.kind,
        .isActive = window.window == snapshot.activeWindow};
    // Without a window manager nobody keeps the state: it is what the program once asked for.
    if (snapshot.hasWindowManager())
        description.isFullScreen = window.isFullScreen;
    if (window.transientFor != XCB_WINDOW_NONE)
        description.transientFor = window.transientFor;
    return description;
}

} // namespace

X11WindowServer::X11WindowServer(ClientWindows &clients)
    : m_clients(clients)
{
    connect(&clients, &ClientWindows::changed, this, &WindowServer::windowsChanged);
}

std::optional<QList<WindowDescription>> X11WindowServer::onScreenWindows() const
{
    const ClientSnapshot &snapshot = m_clients.snapshot();
    const X11Coordinates coordinates = X11Coordinates::current();
    QList<WindowDescription> descriptions;
    for (auto window = snapshot.windows.rbegin(); window != snapshot.windows.rend(); ++window) {
        if (window->kind == WindowKind::desktop || !isOnScreen(*window, snapshot))
            continue;
        descriptions.append(describe(*window, snapshot, coordinates));
    }
    return descriptions;
}

int X11WindowServer::level(WindowLevel level) const
{
    switch (level) {
    case WindowLevel::dock:
        return dockLayer;
    case WindowLevel::mainMenu:
        return mainMenuLayer;
    }
    Q_UNREACHABLE();
}

} // namespace moorline
