#include "platform/Platform.h"
#include "platform/linux/NullAdapters.h"
#include "platform/linux/bus/SystemBus.h"
#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/desktop/LogindPower.h"
#include "platform/linux/desktop/StatusNotifierBar.h"
#include "platform/linux/desktop/SvgSymbols.h"
#include "platform/linux/desktop/XdgDirectories.h"
#include "platform/linux/docks/DesktopDock.h"
#include "platform/linux/docks/DesktopDockControl.h"
#include "platform/linux/docks/DesktopPreferences.h"
#include "platform/linux/docks/DesktopSettings.h"
#include "platform/linux/docks/DockWindows.h"
#include "platform/linux/location/GWeatherGeocoder.h"
#include "platform/linux/location/GeoClueLocationManager.h"
#include "platform/linux/network/RouteMonitor.h"
#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "platform/linux/x11/X11Pointer.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11WindowServer.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtHttpClient.h"

#include <QGuiApplication>

namespace moorline {

namespace {

constexpr auto qtPlatform = "QT_QPA_PLATFORM";

bool hasDisplay()
{
    struct Disconnecter {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    const std::unique_ptr<xcb_connection_t, Disconnecter> connection(xcb_connect(nullptr, nullptr));
    return xcb_connection_has_error(connection.get()) == 0;
}

/// What adapters for an X server have in common.
struct X11Desktop {
    explicit X11Desktop(std::unique_ptr<XConnection> opened)
        : connection(std::move(opened))
        , clients(*connection)
        , docks(clients)
    {
    }

    std::unique_ptr<XConnection> connection;
    ClientWindows clients;
    DockWindows docks;
};

/// What all adapters have in common, in the order of dependence.
struct Foundation {
    std::unique_ptr<X11Desktop> desktop;
    DesktopDock dock;
    SystemBus systemBus;
};

/// Null when Qt does not draw on an X server.
std::unique_ptr<X11Desktop> openDesktop()
{
    if (QGuiApplication::platformName() != QLatin1StringView("xcb"))
        return nullptr;
    auto connection = XConnection::open();
    return connection ? std::make_unique<X11Desktop>(std::move(connection)) : nullptr;
}

std::shared_ptr<Foundation> layFoundation(Clock &clock)
{
    auto desktop = openDesktop();
    const DockWindows *docks = desktop ? &desktop->docks : nullptr;
    return std::shared_ptr<Foundation>(new Foundation{std::move(desktop), DesktopDock(docks), SystemBus(clock)});
}

void addDesktop(Platform &platform, X11Desktop &desktop)
{
    platform.screens = std::make_unique<X11Screens>(desktop.connection.get());
    platform.pointer = std::make_unique<X11Pointer>(*desktop.connection);
    platform.panelWindow = std::make_unique<X11PanelWindow>(*desktop.connection, desktop.clients, *platform.clock);
    platform.windowServer = std::make_unique<X11WindowServer>(desktop.clients);
    platform.workspace = std::make_unique<X11Workspace>(*desktop.connection);
}

void addNothing(Platform &platform)
{
    platform.screens = std::make_unique<X11Screens>(nullptr);
    platform.pointer = std::make_unique<NullPointer>();
    platform.panelWindow = std::make_unique<NullPanelWindow>();
    platform.windowServer = std::make_unique<NullWindowServer>();
    platform.workspace = std::make_unique<Workspace>();
}

} // namespace

bool preparePlatform(DisplayNeed need)
{
    const QByteArray chosen = qgetenv(qtPlatform);
    // Chosen for this program alone, while "wayland" and the like are often set for a whole session.
    if (chosen == "offscreen" || chosen == "minimal" || chosen == "vnc")
        return true;
    // Also in a Wayland session with an X server: only there may a program place its own window.
    if (hasDisplay())
        return qputenv(qtPlatform, "xcb");
    return need == DisplayNeed::optional && qputenv(qtPlatform, "offscreen");
}

std::unique_ptr<Platform> createPlatform()
{
    auto platform = std::make_unique<Platform>();
    platform->clock = std::make_unique<QtClock>();
    const auto foundation = layFoundation(*platform->clock);
    platform->foundation = foundation;
    if (foundation->desktop)
        addDesktop(*platform, *foundation->desktop);
    else
        addNothing(*platform);
    platform->preferences = std::make_unique<DesktopPreferences>(foundation->dock);
    platform->systemDockControl = std::make_unique<DesktopDockControl>(foundation->dock);
    platform->systemSettings = std::make_unique<DesktopSettings>(foundation->dock);
    platform->power = std::make_unique<LogindPower>(foundation->systemBus);
    platform->statusBar = std::make_unique<StatusNotifierBar>();
    platform->directories = std::make_unique<XdgDirectories>();
    platform->httpClient = std::make_unique<QtHttpClient>(*platform->clock);
    platform->network = std::make_unique<RouteMonitor>(*platform->clock);
    platform->locationManager = std::make_unique<GeoClueLocationManager>(
        *platform->clock, QGuiApplication::desktopFileName(), foundation->systemBus);
    platform->geocoder = std::make_unique<GWeatherGeocoder>();
    platform->appBundles = std::make_unique<DesktopEntries>();
    platform->systemImages = std::make_unique<SvgSymbols>();
    platform->wordingCatalogue = QStringLiteral(":/wording/linux_en.qm");
    return platform;
}

} // namespace moorline
