#pragma once

#include "app/RunPlan.h"
#include "apps/AppLauncher.h"
#include "chrome/BarHolds.h"
#include "chrome/BarStage.h"
#include "settings/SettingsStore.h"
#include "system/AppleScriptRunner.h"
#include "system/Reachability.h"
#include "system/ScriptedSystemDockControl.h"
#include "system/SpaceProbe.h"
#include "system/SystemDock.h"
#include "theme/Symbols.h"
#include "theme/TextFamily.h"
#include "time/TimeKeeper.h"
#include "weather/LocationService.h"
#include "weather/WeatherService.h"

namespace moorline {

/// What changes the desktop's dock: the platform's own way, else `scripted`.
[[nodiscard]] SystemDockControl &dockControl(const Platform &platform, SystemDockControl &scripted);

/// Every service and store of a run, one of each, in the order of the start; each stands on those above it.
struct Services {
    /// `platform` outlives the services.
    Services(Platform &platform, const RunPlan &plan);

    /// Begins what runs by itself: the clock's ticking, the weather's asking.
    void start();

    Platform &platform;
    TextFamily textFamily;
    AppLauncher launcher;
    SettingsStore store;
    AppleScriptRunner scripts;
    ScriptedSystemDockControl scriptedDockControl;
    SystemDock systemDock;
    SpaceProbe spaceProbe;
    Symbols symbols;
    BarHolds barHolds;
    BarStage barStage;
    TimeKeeper timeKeeper;
    Reachability reachability;
    LocationService location;
    WeatherService weather;
};

} // namespace moorline
