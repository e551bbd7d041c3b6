#pragma once

#include "platform/Accessibility.h"
#include "platform/AppBundles.h"
#include "platform/BadgeSource.h"
#include "platform/Clock.h"
#include "platform/Directories.h"
#include "platform/FileManager.h"
#include "platform/FileWatch.h"
#include "platform/Files.h"
#include "platform/Geocoder.h"
#include "platform/HttpClient.h"
#include "platform/Icons.h"
#include "platform/InstanceClaim.h"
#include "platform/LocationManager.h"
#include "platform/MediaPlayers.h"
#include "platform/Network.h"
#include "platform/PanelWindow.h"
#include "platform/Pictures.h"
#include "platform/Pointer.h"
#include "platform/PopupWindows.h"
#include "platform/Port.h"
#include "platform/Power.h"
#include "platform/Preferences.h"
#include "platform/Screens.h"
#include "platform/StatusBar.h"
#include "platform/SymbolCatalogue.h"
#include "platform/SystemDockControl.h"
#include "platform/SystemFont.h"
#include "platform/SystemSettings.h"
#include "platform/TrashBin.h"
#include "platform/UserDefaults.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"

#include <functional>
#include <memory>

namespace moorline {

/// Calls back the next time that control is in the event loop.
void soon(std::function<void()> begin);

/// One adapter for each port, and what else differs between systems. Lives as long as the program.
///
/// Built by naming every port; one that is left out is an error of compilation.
struct Platform {
    Port<Clock> clock;
    /// What other adapters have in common; before them, so that it outlives them.
    std::shared_ptr<void> foundation = nullptr;
    Port<Screens> screens;
    Port<Pointer> pointer;
    Port<PanelWindow> panelWindow;
    Port<PopupWindows> popupWindows;
    Port<WindowServer> windowServer;
    Port<Workspace> workspace;
    Port<Power> power;
    Port<StatusBar> statusBar;
    Port<Preferences> preferences;
    /// These may be absent: the body has implementations of its own, made of scripts, processes and what the
    /// system's dock tells to assistive programs.
    std::unique_ptr<SystemDockControl> systemDockControl = nullptr;
    std::unique_ptr<FileManager> fileManager = nullptr;
    std::unique_ptr<BadgeSource> badgeSource = nullptr;
    std::unique_ptr<TrashBin> trashBin = nullptr;
    std::unique_ptr<MediaPlayers> mediaPlayers = nullptr;
    Port<Accessibility> accessibility;
    Port<SystemSettings> systemSettings;
    Port<InstanceClaim> instanceClaim;
    Port<Directories> directories;
    Port<UserDefaults> userDefaults;
    Port<Files> files;
    Port<FileWatch> fileWatch;
    Port<HttpClient> httpClient;
    Port<Network> network;
    Port<LocationManager> locationManager;
    Port<Geocoder> geocoder;
    Port<AppBundles> appBundles;
    Port<SymbolCatalogue> symbolCatalogue;
    Port<Icons> icons;
    Port<Pictures> pictures;
    Port<SystemFont> systemFont;
    /// Calls back from an event loop, once, as soon as the application may begin: its loop may run and its first window
    /// be made.
    std::function<void(std::function<void()>)> whenReady = soon;
    /// Resource path of the catalogue that replaces texts naming macOS; empty where they stand as they are.
    QString wordingCatalogue = {};
};

enum class DisplayNeed {
    /// The program makes pictures or reports and can do without a display.
    optional,
    /// The program is nothing without a display.
    required,
};

/// What is only known before the application object exists.
struct Preparation {
    /// What the program was started with, as "NAME=value", before it set anything in it. Empty where no adapter asks.
    QList<QByteArray> environment = {};
};

/// Settles what has to be settled before the application object exists, chiefly which Qt platform draws. Absent when a
/// display is required and there is none.
[[nodiscard]] std::optional<Preparation> preparePlatform(DisplayNeed need);

/// The adapters of the system this program was built for. The application object must exist.
[[nodiscard]] Platform createPlatform(const Preparation &preparation);

} // namespace moorline
