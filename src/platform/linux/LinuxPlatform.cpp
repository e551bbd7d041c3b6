#include "platform/Platform.h"
#include "platform/linux/Heap.h"
#include "platform/linux/LinuxStatusBar.h"
#include "platform/linux/apps/AppStarter.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/apps/LauncherEntrySource.h"
#include "platform/linux/apps/LinuxFileManager.h"
#include "platform/linux/apps/LinuxTrashBin.h"
#include "platform/linux/apps/LinuxWorkspace.h"
#include "platform/linux/apps/PresentTime.h"
#include "platform/linux/apps/StarterWorkspace.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/BusGate.h"
#include "platform/linux/bus/BusKeeper.h"
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
#include "platform/linux/players/MprisPlayers.h"
#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/DesktopSettingsClient.h"
#include "platform/linux/x11/StartupMessages.h"
#include "platform/linux/x11/UserTime.h"
#include "platform/linux/x11/X11InstanceClaim.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "platform/linux/x11/X11Pointer.h"
#include "platform/linux/x11/X11PopupWindows.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11WindowServer.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/qt/JsonUserDefaults.h"
#include "platform/qt/NullAdapters.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtFileWatch.h"
#include "platform/qt/QtHttpClient.h"
#include "platform/qt/QtPictures.h"

#include <QAccessible>
#include <QDir>
#include <QGuiApplication>

namespace moorline {

namespace {

/// What is asked of the system bus can wait until the bar is there.
constexpr std::chrono::seconds systemBusDelay{1};

/// Fonts, entries, icons and the bus are read at the start, and most of what that takes is free again soon after.
constexpr std::chrono::seconds trimDelay{5};

/// What adapters for an X server have in common.
struct X11Desktop {
    X11Desktop(std::unique_ptr<XConnection> opened, Clock &clock)
        : connection(std::move(opened))
        , clients(*connection)
        , docks(clients)
        , settings(*connection, clock)
        , startupMessages(*connection)
        , userTime(*connection, clock)
    {
    }

    std::unique_ptr<XConnection> connection;
    ClientWindows clients;
    DockWindows docks;
    DesktopSettingsClient settings;
    StartupMessages startupMessages;
    UserTime userTime;
};

/// A bus, and who opens it.
struct KeptBus {
    KeptBus(BusKind kind, Clock &clock)
        : keeper(kind, bus, clock)
    {
    }

    Bus bus;
    BusKeeper keeper;
};

struct FollowedIconTheme {
    explicit FollowedIconTheme(const DesktopSettingsClient *settings)
        : theme(settings, fileWatch, currentDesktopNames())
    {
    }

    QtFileWatch fileWatch;
    SessionIconTheme theme;
};

/// What all adapters have in common, in the order of dependence.
struct Foundation {
    std::unique_ptr<X11Desktop> desktop;
    DesktopDocks docks;
    KeptBus systemBus;
    /// Whoever keeps it keeps the program from ending with it.
    KeptBus sessionBus;
    FollowedIconTheme icons;
    /// Null without a desktop, where Qt asks nothing of the session bus.
    std::unique_ptr<BusGate> sessionBusGate = nullptr;
    /// Made as soon as the entries are known that it starts.
    std::unique_ptr<AppStarter> starter = nullptr;
    std::unique_ptr<Clock::Timer> trimTimer = nullptr;
};

std::unique_ptr<AppStarter> makeStarter(
    Foundation &foundation, DesktopEntries &entries, Clock &clock, const QList<QByteArray> &environment)
{
    X11Desktop *desktop = foundation.desktop.get();
    const auto userTime = [desktop] { return desktop ? presentTime(desktop->userTime, *desktop->connection) : 0; };
    return std::make_unique<AppStarter>(entries, foundation.sessionBus.bus, clock, environment,
        desktop ? &desktop->startupMessages : nullptr, userTime);
}

/// Null when Qt does not draw on an X server.
std::unique_ptr<X11Desktop> openDesktop(Clock &clock)
{
    if (QGuiApplication::platformName() != QLatin1StringView("xcb"))
        return nullptr;
    auto connection = XConnection::open();
    return connection ? std::make_unique<X11Desktop>(std::move(connection), clock) : nullptr;
}

std::shared_ptr<Foundation> layFoundation(Clock &clock)
{
    auto desktop = openDesktop(clock);
    const DockWindows *windows = desktop ? &desktop->docks : nullptr;
    const DesktopSettingsClient *settings = desktop ? &desktop->settings : nullptr;
    std::shared_ptr<Foundation> foundation(new Foundation{std::move(desktop), DesktopDocks(windows),
        KeptBus(BusKind::system, clock), KeptBus(BusKind::session, clock), FollowedIconTheme(settings)});
    // At once, before anyone else's connection to the session bus can end the program.
    if (windows)
        foundation->sessionBusGate = std::make_unique<BusGate>(foundation->sessionBus.keeper, clock);
    else
        foundation->sessionBus.keeper.open();
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

void whenSessionBusIsKnown(BusGate *gate, const std::function<void()> &begin)
{
    if (!gate) {
        soon(begin);
        return;
    }
    gate->whenKnown([begin](bool answers) {
        if (!answers)
            keepQtOffTheSessionBus();
        begin();
    });
}

/// The system bus comes after all that: whoever opens it reads the environment on another thread.
std::function<void(std::function<void()>)> readiness(Foundation &foundation)
{
    return [&foundation](const std::function<void()> &begin) {
        whenSessionBusIsKnown(foundation.sessionBusGate.get(), [&foundation, begin] {
            foundation.systemBus.keeper.openAfter(systemBusDelay);
            begin();
        });
    };
}

Port<ThemedIcons> makeIcons(const Foundation &foundation, DesktopEntries &entries, Clock &clock)
{
    auto icons = makePort<ThemedIcons>(clock, foundation.icons.theme);
    ThemedIcons &themed = *icons;
    themed.setLocator([&entries](const QString &path, const std::function<void(const QString &)> &located) {
        entries.whenLoaded([&entries, path, located] { located(entries.locate(path, std::nullopt).value_or(path)); });
    });
    // Whoever asked before the entries were read for the first time was told afterwards.
    QObject::connect(&entries, &AppBundles::changed, &themed, [&themed, isFirst = true]() mutable {
        if (!std::exchange(isFirst, false))
            themed.noteApplicationsChanged();
    });
    return icons;
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

Port<Workspace> makeWorkspace(Foundation &foundation, DesktopEntries &entries, Clock &clock)
{
    X11Desktop *desktop = foundation.desktop.get();
    if (!desktop)
        return makePort<StarterWorkspace>(entries, *foundation.starter, clock);
    return makePort<LinuxWorkspace>(LinuxWorkspace::Context{.connection = *desktop->connection,
        .clients = desktop->clients,
        .entries = entries,
        .starter = *foundation.starter,
        .userTime = desktop->userTime,
        .sessionBus = foundation.sessionBus.bus,
        .clock = clock});
}

Port<InstanceClaim> makeInstanceClaim(const X11Desktop *desktop)
{
    if (desktop)
        return makePort<X11InstanceClaim>(*desktop->connection);
    return makePort<NullInstanceClaim>();
}

} // namespace

Platform createPlatform(const Preparation &preparation)
{
    auto ownedClock = makePort<QtClock>();
    QtClock &clock = *ownedClock;
    const auto foundation = layFoundation(clock);
    X11Desktop *desktop = foundation->desktop.get();
    auto ownedEntries = makePort<DesktopEntries>(clock);
    foundation->trimTimer = clock.after(trimDelay, trimHeap);
    foundation->starter = makeStarter(*foundation, *ownedEntries, clock, preparation.environment);
    const auto catalogue = [&entries = *ownedEntries] { return entries.catalogue(); };
    auto ownedIcons = makeIcons(*foundation, *ownedEntries, clock);
    auto ownedWorkspace = makeWorkspace(*foundation, *ownedEntries, clock);
    Workspace &workspace = *ownedWorkspace;
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
        .workspace = std::move(ownedWorkspace),
        .power = makePort<LogindPower>(foundation->systemBus.bus, clock),
        .statusBar =
            makePort<LinuxStatusBar>(foundation->sessionBus.bus, clock, desktop ? desktop->connection.get() : nullptr),
        .preferences = makePort<DesktopPreferences>(foundation->docks, catalogue),
        .systemDockControl = std::make_unique<DesktopDockControl>(foundation->docks),
        .fileManager = std::make_unique<LinuxFileManager>(workspace, QDir::homePath()),
        .badgeSource = std::make_unique<LauncherEntrySource>(foundation->sessionBus.bus, *ownedEntries, clock),
        .trashBin = std::make_unique<LinuxTrashBin>(LinuxTrashBin::Context{.clock = clock,
            .starter = *foundation->starter,
            .count = countOfTrash,
            .volumes = mountedVolumes,
            .homeTrash = homeTrashPath()}),
        .mediaPlayers = std::make_unique<MprisPlayers>(
            MprisPlayers::Context{.sessionBus = foundation->sessionBus.bus, .clock = clock, .workspace = workspace}),
        .accessibility = makePort<NullAccessibility>(),
        .systemSettings = makePort<DesktopSettings>(foundation->docks,
            [starter = foundation->starter.get()](
                const QString &program, const QStringList &arguments) { starter->startProgram(program, arguments); }),
        .instanceClaim = makeInstanceClaim(desktop),
        .directories = makePort<XdgDirectories>(),
        .userDefaults = makePort<JsonUserDefaults>(clock, userDefaultsPath()),
        .files = makePort<PlainFiles>(clock, foundation->sessionBus.bus),
        .fileWatch = std::move(ownedFileWatch),
        .httpClient = makePort<QtHttpClient>(clock),
        .network = makePort<RouteMonitor>(),
        .locationManager =
            makePort<GeoClueLocationManager>(foundation->systemBus.bus, clock, QGuiApplication::desktopFileName()),
        .geocoder = makePort<GWeatherGeocoder>(),
        .appBundles = std::move(ownedEntries),
        .symbolCatalogue = makePort<SvgSymbols>(),
        .icons = std::move(ownedIcons),
        .pictures = makePort<QtPictures>(),
        .systemFont = makePort<SessionFont>(desktop ? &desktop->settings : nullptr, fileWatch, currentDesktopNames()),
        .whenReady = readiness(*foundation),
        .wordingCatalogue = QStringLiteral(":/wording/linux_en.qm"),
    };
}

} // namespace moorline
