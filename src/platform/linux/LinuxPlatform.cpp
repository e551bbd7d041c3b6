#include "platform/Platform.h"
#include "platform/linux/LinuxStatusBar.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/BusGate.h"
#include "platform/linux/bus/BusKeeper.h"
#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/desktop/LogindPower.h"
#include "platform/linux/desktop/PlainFiles.h"
#include "platform/linux/desktop/SessionFont.h"
#include "platform/linux/desktop/SvgSymbols.h"
#include "platform/linux/desktop/XdgDirectories.h"
#include "platform/linux/docks/DesktopDockControl.h"
#include "platform/linux/docks/DesktopDocks.h"
#include "platform/linux/docks/DesktopPreferences.h"
#include "platform/linux/docks/DesktopSettings.h"
#include "platform/linux/docks/DockWindows.h"
#include "platform/linux/icons/SessionIconTheme.h"
#include "platform/linux/icons/ThemedIcons.h"
#include "platform/linux/location/GWeatherGeocoder.h"
#include "platform/linux/location/GeoClueLocationManager.h"
#include "platform/linux/network/RouteMonitor.h"
#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/DesktopSettingsClient.h"
#include "platform/linux/x11/X11InstanceClaim.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "platform/linux/x11/X11Pointer.h"
#include "platform/linux/x11/X11PopupWindows.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11WindowServer.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/qt/NullAdapters.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtFileWatch.h"
#include "platform/qt/QtHttpClient.h"

#include <QAccessible>
#include <QGuiApplication>

namespace moorline {

namespace {

constexpr auto qtPlatform = "QT_QPA_PLATFORM";

/// What is asked of the system bus can wait until the bar is there.
constexpr std::chrono::seconds systemBusDelay{1};
/// Before anyone else's connection to the session bus can end the program.
constexpr std::chrono::milliseconds sessionBusDelay{0};

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
        , settings(*connection)
    {
    }

    std::unique_ptr<XConnection> connection;
    ClientWindows clients;
    DockWindows docks;
    DesktopSettingsClient settings;
};

/// A bus, and who opens it.
struct KeptBus {
    KeptBus(BusKind kind, Clock &clock, std::chrono::milliseconds delay)
        : keeper(kind, bus, clock, delay)
    {
    }

    Bus bus;
    BusKeeper keeper;
};

/// What all adapters have in common, in the order of dependence.
struct Foundation {
    std::unique_ptr<X11Desktop> desktop;
    DesktopDocks docks;
    KeptBus systemBus;
    /// Whoever keeps it keeps the program from ending with it.
    KeptBus sessionBus;
    SessionIconTheme iconTheme;
    /// Null without a desktop, where Qt asks nothing of the session bus.
    std::unique_ptr<BusGate> sessionBusGate = nullptr;
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
    const DockWindows *windows = desktop ? &desktop->docks : nullptr;
    const DesktopSettingsClient *settings = desktop ? &desktop->settings : nullptr;
    std::shared_ptr<Foundation> foundation(
        new Foundation{std::move(desktop), DesktopDocks(windows), KeptBus(BusKind::system, clock, systemBusDelay),
            KeptBus(BusKind::session, clock, sessionBusDelay), SessionIconTheme(settings)});
    if (windows)
        foundation->sessionBusGate = std::make_unique<BusGate>(foundation->sessionBus.keeper, clock);
    return foundation;
}

/// Qt opens the session bus with the first window, to ask whether a screen reader runs, and waits for a bus that hangs.
/// When it is told of another address it asks there, once.
void keepQtOffTheSessionBus()
{
    constexpr auto accessibilityBus = "AT_SPI_BUS_ADDRESS";
    if (qEnvironmentVariableIsSet(accessibilityBus))
        return;
    qDebug("Moorline: the session bus does not answer; screen readers are not told of the bar");
    qputenv(accessibilityBus, "disabled:");
    static_cast<void>(QAccessible::isActive());
    // Nor shall the programs that are started from the bar inherit it.
    qunsetenv(accessibilityBus);
}

std::function<void(std::function<void()>)> readiness(BusGate *sessionBusGate)
{
    if (!sessionBusGate)
        return soon;
    return [sessionBusGate](const std::function<void()> &begin) {
        sessionBusGate->whenKnown([begin](bool answers) {
            if (!answers)
                keepQtOffTheSessionBus();
            begin();
        });
    };
}

Port<Pointer> makePointer(const X11Desktop *desktop)
{
    if (desktop)
        return makePort<X11Pointer>(*desktop->connection);
    return makePort<NullPointer>();
}

Port<PanelWindow> makePanelWindow(X11Desktop *desktop, Clock &clock)
{
    if (desktop)
        return makePort<X11PanelWindow>(*desktop->connection, desktop->clients, clock);
    return makePort<NullPanelWindow>();
}

Port<PopupWindows> makePopupWindows(const X11Desktop *desktop)
{
    if (desktop)
        return makePort<X11PopupWindows>(*desktop->connection);
    return makePort<NullPopupWindows>();
}

Port<WindowServer> makeWindowServer(X11Desktop *desktop)
{
    if (desktop)
        return makePort<X11WindowServer>(desktop->clients);
    return makePort<NullWindowServer>();
}

Port<Workspace> makeWorkspace(X11Desktop *desktop)
{
    if (desktop)
        return makePort<X11Workspace>(*desktop->connection);
    return makePort<Workspace>();
}

Port<InstanceClaim> makeInstanceClaim(const X11Desktop *desktop)
{
    if (desktop)
        return makePort<X11InstanceClaim>(*desktop->connection);
    return makePort<NullInstanceClaim>();
}

} // namespace

bool preparePlatform(DisplayNeed need)
{
    // Else Qt loads the desktop's theme plug-in, and with it another toolkit into this process: 130 ms and 3 MB more to
    // start.
    QGuiApplication::setDesktopSettingsAware(false);
    const QByteArray chosen = qgetenv(qtPlatform);
    // Chosen for this program alone, while "wayland" and the like are often set for a whole session.
    if (chosen == "offscreen" || chosen == "minimal" || chosen == "vnc")
        return true;
    // Also in a Wayland session with an X server: only there may a program place its own window.
    if (hasDisplay())
        return qputenv(qtPlatform, "xcb");
    return need == DisplayNeed::optional && qputenv(qtPlatform, "offscreen");
}

Platform createPlatform()
{
    auto ownedClock = makePort<QtClock>();
    QtClock &clock = *ownedClock;
    const auto foundation = layFoundation(clock);
    X11Desktop *desktop = foundation->desktop.get();
    auto ownedFileWatch = makePort<QtFileWatch>();
    QtFileWatch &fileWatch = *ownedFileWatch;
    return {
        .clock = std::move(ownedClock),
        .foundation = foundation,
        .screens = makePort<X11Screens>(desktop ? desktop->connection.get() : nullptr),
        .pointer = makePointer(desktop),
        .panelWindow = makePanelWindow(desktop, clock),
        .popupWindows = makePopupWindows(desktop),
        .windowServer = makeWindowServer(desktop),
        .workspace = makeWorkspace(desktop),
        .power = makePort<LogindPower>(foundation->systemBus.bus, clock),
        .statusBar =
            makePort<LinuxStatusBar>(foundation->sessionBus.bus, clock, desktop ? desktop->connection.get() : nullptr),
        .preferences = makePort<DesktopPreferences>(foundation->docks),
        .systemDockControl = std::make_unique<DesktopDockControl>(foundation->docks),
        .systemSettings = makePort<DesktopSettings>(foundation->docks),
        .instanceClaim = makeInstanceClaim(desktop),
        .directories = makePort<XdgDirectories>(),
        .files = makePort<PlainFiles>(),
        .fileWatch = std::move(ownedFileWatch),
        .httpClient = makePort<QtHttpClient>(clock),
        .network = makePort<RouteMonitor>(),
        .locationManager =
            makePort<GeoClueLocationManager>(foundation->systemBus.bus, clock, QGuiApplication::desktopFileName()),
        .geocoder = makePort<GWeatherGeocoder>(),
        .appBundles = makePort<DesktopEntries>(),
        .symbolCatalogue = makePort<SvgSymbols>(),
        .icons = makePort<ThemedIcons>(clock, foundation->iconTheme),
        .systemFont = makePort<SessionFont>(desktop ? &desktop->settings : nullptr, fileWatch, currentDesktopNames()),
        .whenReady = readiness(foundation->sessionBusGate.get()),
        .wordingCatalogue = QStringLiteral(":/wording/linux_en.qm"),
    };
}

} // namespace moorline
