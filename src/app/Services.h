#pragma once

#include "app/RunPlan.h"
#include "apps/AppBadgeService.h"
#include "apps/AppLauncher.h"
#include "apps/DockImporter.h"
#include "apps/DockTileBadges.h"
#include "apps/RecentAppsService.h"
#include "apps/RunningAppsService.h"
#include "apps/ScriptedFileManager.h"
#include "apps/SteadyRunningSet.h"
#include "chrome/BarHolds.h"
#include "chrome/BarStage.h"
#include "files/ScriptedTrashBin.h"
#include "music/Covers.h"
#include "music/NowPlayingService.h"
#include "music/ScriptedMediaPlayers.h"
#include "settings/SettingsStore.h"
#include "system/AppleScriptRunner.h"
#include "system/Reachability.h"
#include "system/ScriptedSystemDockControl.h"
#include "system/SpaceProbe.h"
#include "system/SystemDock.h"
#include "theme/IconCache.h"
#include "theme/Symbols.h"
#include "theme/TextFamily.h"
#include "time/TimeKeeper.h"
#include "weather/LocationService.h"
#include "weather/WeatherService.h"

namespace moorline {

/// What changes the desktop's dock: the platform's own way, else `scripted`.
[[nodiscard]] SystemDockControl &dockControl(const Platform &platform, SystemDockControl &scripted);

/// What brings the file manager forward, in the same way.
[[nodiscard]] FileManager &fileManager(const Platform &platform, FileManager &scripted);
/// Where badges come from: the platform's own way, else what the system's dock shows.
[[nodiscard]] BadgeSource &badgeSource(const Platform &platform, BadgeSource &dockTiles);
/// What tells of the trash, in the same way.
[[nodiscard]] TrashBin &trashBin(const Platform &platform, TrashBin &scripted);
/// Who the music players are, in the same way.
[[nodiscard]] MediaPlayers &mediaPlayers(const Platform &platform, MediaPlayers &scripted);

/// Every service and store of a run, one of each, in the order of the start; each stands on those above it.
struct Services {
    /// `platform` outlives the services.
    Services(Platform &platform, const RunPlan &plan);

    /// Begins what runs by itself and any picture of the bar shows: the clock's ticking, the weather's asking, the
    /// music's playing, the applications' coming and going.
    void start();

    Platform &platform;
    TextFamily textFamily;
    AppleScriptRunner scripts;
    ScriptedFileManager scriptedFileManager;
    ScriptedTrashBin scriptedTrashBin;
    ScriptedMediaPlayers scriptedMediaPlayers;
    AppLauncher launcher;
    SettingsStore store;
    ScriptedSystemDockControl scriptedDockControl;
    SystemDock systemDock;
    SpaceProbe spaceProbe;
    Symbols symbols;
    IconCache icons;
    BarHolds barHolds;
    BarStage barStage;
    TimeKeeper timeKeeper;
    Reachability reachability;
    LocationService location;
    WeatherService weather;
    NowPlayingService nowPlaying;
    Covers covers;
    SteadyRunningSet running;
    RecentAppsService recentApps;
    RunningAppsService runningApps;
    DockTileBadges dockTileBadges;
    AppBadgeService badges;
    DockImporter importer;
};

} // namespace moorline
