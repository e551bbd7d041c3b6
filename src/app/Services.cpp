#include "app/Services.h"

#include "app/WeatherServers.h"
#include "platform/Platform.h"

namespace moorline {

SystemDockControl &dockControl(const Platform &platform, SystemDockControl &scripted)
{
    return platform.systemDockControl ? *platform.systemDockControl : scripted;
}

Services::Services(Platform &lentPlatform, const RunPlan &plan)
    : platform(lentPlatform)
    , textFamily(*platform.systemFont)
    , launcher(*platform.appBundles)
    , store({
          .directories = *platform.directories,
          .clock = *platform.clock,
          .fileWatch = *platform.fileWatch,
          .files = *platform.files,
          .applicationExtension = platform.appBundles->applicationExtension(),
          .makeShortcut = [this](const QUrl &url) { return launcher.makeShortcut(url); },
      })
    , scripts(*platform.clock)
    , scriptedDockControl(scripts)
    , systemDock(*platform.preferences, *platform.windowServer, *platform.screens,
          dockControl(platform, scriptedDockControl), *platform.systemSettings)
    , spaceProbe(*platform.windowServer)
    , symbols(*platform.symbolCatalogue)
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
}

} // namespace moorline
