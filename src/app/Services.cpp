#include "app/Services.h"

#include "app/WeatherServers.h"
#include "platform/Platform.h"

#include <QDir>

namespace moorline {

SystemDockControl &dockControl(const Platform &platform, SystemDockControl &scripted)
{
    return platform.systemDockControl ? *platform.systemDockControl : scripted;
}

FileManager &fileManager(const Platform &platform, FileManager &scripted)
{
    return platform.fileManager ? *platform.fileManager : scripted;
}

BadgeSource &badgeSource(const Platform &platform, BadgeSource &dockTiles)
{
    return platform.badgeSource ? *platform.badgeSource : dockTiles;
}

TrashBin &trashBin(const Platform &platform, TrashBin &scripted)
{
    return platform.trashBin ? *platform.trashBin : scripted;
}

MediaPlayers &mediaPlayers(const Platform &platform, MediaPlayers &scripted)
{
    return platform.mediaPlayers ? *platform.mediaPlayers : scripted;
}

Services::Services(Platform &lentPlatform, const RunPlan &plan)
    : platform(lentPlatform)
    , textFamily(*platform.systemFont)
    , scripts(*platform.clock)
    , scriptedFileManager({
          .scripts = scripts,
          .preferences = *platform.preferences,
          .workspace = *platform.workspace,
          .home = QDir::homePath(),
      })
    , scriptedTrashBin({.scripts = scripts, .files = *platform.files, .directories = *platform.directories})
    , scriptedMediaPlayers({
          .scripts = scripts,
          .workspace = *platform.workspace,
          .files = *platform.files,
          .temporaryFolder = QDir::tempPath(),
      })
    , launcher({
          .bundles = *platform.appBundles,
          .workspace = *platform.workspace,
          .fileManager = fileManager(platform, scriptedFileManager),
          .clock = *platform.clock,
          .steadilyRunning = [this] { return running.applications(); },
      })
    , store({
          .directories = *platform.directories,
          .clock = *platform.clock,
          .fileWatch = *platform.fileWatch,
          .files = *platform.files,
          .applicationExtension = platform.appBundles->applicationExtension(),
          .makeShortcut = [this](const QUrl &url) { return launcher.makeShortcut(url); },
          .lookAt = [this](const QStringList &paths) { return platform.appBundles->lookAt(paths); },
      })
    , scriptedDockControl(scripts)
    , systemDock(*platform.preferences, *platform.windowServer, *platform.screens,
          dockControl(platform, scriptedDockControl), *platform.systemSettings)
    , spaceProbe(*platform.windowServer)
    , symbols(*platform.symbolCatalogue)
    , icons(*platform.icons)
    , barStage({
          .windows = *platform.popupWindows,
          .screens = *platform.screens,
          .panel = *platform.panelWindow,
          .pointer = *platform.pointer,
          .clock = *platform.clock,
          .symbols = symbols,
          .holds = barHolds,
      })
    , timeKeeper(*platform.clock)
    , reachability(*platform.network, *platform.clock)
    , location(*platform.locationManager, *platform.geocoder, *platform.clock)
    , weather({
          .store = store,
          .clock = *platform.clock,
          .client = *platform.httpClient,
          .location = location,
          .network = *platform.network,
          .endpoints = plan.weatherOrigin ? weatherEndpoints(*plan.weatherOrigin) : publicWeatherEndpoints(),
          .debug = plan.debug,
      })
    , nowPlaying(mediaPlayers(platform, scriptedMediaPlayers), *platform.clock)
    , covers({.pictures = *platform.pictures, .client = *platform.httpClient, .clock = *platform.clock})
    , running(*platform.workspace, *platform.clock)
    , recentApps({
          .store = store,
          .launcher = launcher,
          .running = running,
          .workspace = *platform.workspace,
          .bundles = *platform.appBundles,
          .files = *platform.files,
          .defaults = *platform.userDefaults,
          .clock = *platform.clock,
      })
    , runningApps(running, *platform.clock)
    , dockTileBadges(*platform.workspace, *platform.accessibility)
    , badges({
          .store = store,
          .clock = *platform.clock,
          .source = badgeSource(platform, dockTileBadges),
          .bundles = *platform.appBundles,
      })
    , importer({
          .preferences = *platform.preferences,
          .bundles = *platform.appBundles,
          .launcher = launcher,
          .files = *platform.files,
          .store = store,
      })
{
}

void Services::start()
{
    timeKeeper.start();
    // What could not be fetched while there was no network, or is hours old after a sleep, is worth asking for at once.
    QObject::connect(&reachability, &Reachability::becameReachable, &weather, &WeatherService::refresh);
    QObject::connect(platform.power.get(), &Power::didWake, &weather, &WeatherService::refreshIfReachable);
    QObject::connect(&location, &LocationService::authorizationGranted, &weather, &WeatherService::refresh);
    QObject::connect(&location, &LocationService::anotherQuestionAdvised, &weather, &WeatherService::refresh);
    weather.start();
    QObject::connect(&reachability, &Reachability::becameReachable, &covers, &Covers::tryAgain);
    nowPlaying.start();
    recentApps.start();
    runningApps.start();
}

} // namespace moorline
