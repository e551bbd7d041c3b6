#include "platform/linux/x11/X11WindowServer.h"

#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/FullScreenRule.h"
#include "platform/linux/x11/X11Coordinates.h"

#include <QCoreApplication>

namespace moorline {

namespace {

constexpr int normalLayer = 0;
constexpr int floatingLayer = 3;
constexpr int dockLayer = 20;
constexpr int mainMenuLayer = 24;

constexpr int ordinarySpace = 0;
constexpr int fullScreenSpace = 4;

// What a hidden dock leaves at the edge to be called back by is a strip of one to a few pixels.
constexpr int thinnestDock = 8;

const QString displayIdentifier = QStringLiteral("primary");

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
        .bounds = coordinates.windowBoundsFromNative(dock.reachableFrame)};
    const bool isOnPrimary = dock.frame.intersects(screen);
    if (isOnPrimary && !isRevealed(dock, screen))
        return std::nullopt;
    if (liesAlongBottom(dock.reachableFrame, screen))
        description.ownerName = QStringLiteral("Dock");
    else if (liesAlongTop(dock.reachableFrame, screen))
        description.layer = mainMenuLayer;
    return description;
}

std::optional<WindowDescription> describe(const ClientWindow &window, const X11Coordinates &coordinates)
{
    const bool isForeignDock =
        window.kind == ClientWindow::Kind::dock && window.process != QCoreApplication::applicationPid();
    if (isForeignDock)
        return describeDock(window, coordinates);
    return WindowDescription{.ownerName = window.windowClass,
        .ownerProcess = window.process,
        .layer = window.isAbove ? floatingLayer : normalLayer,
        .bounds = coordinates.windowBoundsFromNative(window.frame)};
}

} // namespace

X11WindowServer::X11WindowServer(ClientWindows &clients)
    : m_clients(clients)
{
}

std::optional<QList<WindowDescription>> X11WindowServer::onScreenWindows() const
{
    const ClientSnapshot &snapshot = m_clients.snapshot();
    const X11Coordinates coordinates = X11Coordinates::current();
    QList<WindowDescription> descriptions;
    for (auto window = snapshot.windows.rbegin(); window != snapshot.windows.rend(); ++window) {
        if (window->kind == ClientWindow::Kind::desktop || !isOnScreen(*window, snapshot))
            continue;
        if (const auto description = describe(*window, coordinates))
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

std::optional<QVariantList> X11WindowServer::managedDisplaySpaces() const
{
    const ClientSnapshot &snapshot = m_clients.snapshot();
    if (!snapshot.hasWindowManager())
        return std::nullopt;
    const bool isFullScreen =
        isFullScreenSpace(snapshot, X11Coordinates::current().nativePrimary(), QCoreApplication::applicationPid());
    const QVariantMap space{{QStringLiteral("type"), isFullScreen ? fullScreenSpace : ordinarySpace}};
    return QVariantList{QVariantMap{
        {QStringLiteral("Display Identifier"), displayIdentifier}, {QStringLiteral("Current Space"), space}}};
}

std::optional<QString> X11WindowServer::mainDisplayUUID() const
{
    return displayIdentifier;
}

} // namespace moorline
