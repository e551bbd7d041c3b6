#pragma once

#include "platform/AppBundles.h"
#include "platform/Clock.h"
#include "platform/Directories.h"
#include "platform/Geocoder.h"
#include "platform/HttpClient.h"
#include "platform/LocationManager.h"
#include "platform/Network.h"
#include "platform/PanelWindow.h"
#include "platform/Pointer.h"
#include "platform/Power.h"
#include "platform/Preferences.h"
#include "platform/Screens.h"
#include "platform/StatusBar.h"
#include "platform/SystemDockControl.h"
#include "platform/SystemImages.h"
#include "platform/SystemSettings.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"

#include <memory>

namespace moorline {

/// One adapter for each port, and what else differs between systems. Lives as long as the program.
struct Platform {
    /// What the adapters have in common. The first member, so that it outlives them.
    std::shared_ptr<void> foundation;
    std::unique_ptr<Clock> clock;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<Pointer> pointer;
    std::unique_ptr<PanelWindow> panelWindow;
    std::unique_ptr<WindowServer> windowServer;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<Power> power;
    std::unique_ptr<StatusBar> statusBar;
    std::unique_ptr<Preferences> preferences;
    /// Null where the body's own, made of scripts and processes, is the right one.
    std::unique_ptr<SystemDockControl> systemDockControl;
    std::unique_ptr<SystemSettings> systemSettings;
    std::unique_ptr<Directories> directories;
    std::unique_ptr<HttpClient> httpClient;
    std::unique_ptr<Network> network;
    std::unique_ptr<LocationManager> locationManager;
    std::unique_ptr<Geocoder> geocoder;
    std::unique_ptr<AppBundles> appBundles;
    std::unique_ptr<SystemImages> systemImages;
    /// Resource path of the catalogue that replaces texts naming macOS; empty where they stand as they are.
    QString wordingCatalogue;
};

enum class DisplayNeed {
    /// The program makes pictures or reports and can do without a display.
    optional,
    /// The program is nothing without a display.
    required,
};

/// What has to be settled before the application object exists, chiefly which Qt platform draws. False when a display
/// is required and there is none.
[[nodiscard]] bool preparePlatform(DisplayNeed need);

/// The adapters of the system this program was built for. The application object must exist.
[[nodiscard]] std::unique_ptr<Platform> createPlatform();

} // namespace moorline
