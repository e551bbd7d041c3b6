#include "platform/linux/x11/X11WindowServer.h"

#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/X11Coordinates.h"

#include <QCoreApplication>

namespace moorline {

namespace {

constexpr int normalLayer = 0;
constexpr int floatingLayer = 3;
constexpr int dockLayer = 20;
constexpr int mainMenuLayer = 24;

// What a hidden dock leaves at the edge to be called back by is a strip of one to a few pixels.
constexpr int thinnestDock = 8;

/// Whether the window is to be seen on the current virtual desktop.
bool isOnScreen(const ClientWindow &window, const ClientSnapshot &snapshot)
{
    // The desktop of a window that is not managed is only what its program says.
    const bool isElsewhere =
        window.isManaged && window.desktop && snapshot.currentDesktop && window.desktop != snapshot.currentDesktop;
    return window.isViewable && !window.isHidden && !isElsewhere;
}

bool isRevealed(const ClientWindow &dock, const QRect &screen)
{
    const QRect visible = dock.reachableFrame & screen;
    return visible.width() > thinnestDock && visible.height() > thinnestDock;
}

bool liesAlongBottom(const QRect &frame, const QRect &screen)
{
    return frame.intersects(screen) && frame.bottom() >= screen.bottom() - thinnestDock
        && frame.width() >= frame.height();
}

bool liesAlongTop(const QRect &frame, const QRect &screen)
{
    return frame.intersects(screen) && frame.top() <= screen.top() + thinnestDock && frame.width() >= frame.height();
}

/// Absent for a dock that hides.
std::optional<WindowDescription> describeDock(const ClientWindow &dock, const X11Coordinates &coordinates)
{
    const QRect screen = coordinates.nativePrimary();
    WindowDescription description{.ownerName = dock.windowClass,
        .ownerProcess = dock.process,
        .layer = dockLayer,
        .bounds = coordinates.windowBoundsFromNative(dock.reachableFrame),
        .id = dock.window,
        .kind = WindowKind::dock};
    const bool isOnPrimary = dock.frame.intersects(screen);
    if (isOnPrimary && !isRevealed(dock, screen))
        return std::nullopt;
    if (liesAlongBottom(dock.reachableFrame, screen))
        description.ownerName = QStringLiteral("Dock");
    else if (liesAlongTop(dock.reachableFrame, screen))
        description.layer = mainMenuLayer;
    return description;
}

WindowDescription describeClient(
    const ClientWindow &window, const ClientSnapshot &snapshot, const X11Coordinates &coordinates)
{
    WindowDescription description{.ownerName = window.windowClass,
        .ownerProcess = window.process,
        .layer = window.isAbove ? floatingLayer : normalLayer,
        .bounds = coordinates.windowBoundsFromNative(window.frame),
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

std::optional<WindowDescription> describe(
    const ClientWindow &window, const ClientSnapshot &snapshot, const X11Coordinates &coordinates)
{
    const bool isForeignDock = window.kind == WindowKind::dock && window.process != QCoreApplication::applicationPid();
    return isForeignDock ? describeDock(window, coordinates) : describeClient(window, snapshot, coordinates);
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
        if (const auto description = describe(*window, snapshot, coordinates))
            descriptions.append(*description);
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
