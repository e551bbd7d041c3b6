#pragma once

#include "fakes/FakeApplications.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeHttpClient.h"
#include "fakes/FakeIcons.h"
#include "fakes/FakeLocation.h"
#include "fakes/FakeMediaPlayers.h"
#include "fakes/FakePanelWindow.h"
#include "fakes/FakePictures.h"
#include "fakes/FakePointer.h"
#include "fakes/FakePopupWindows.h"
#include "fakes/FakePreferences.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSystem.h"
#include "fakes/FakeSystemFont.h"
#include "fakes/FakeWindowServer.h"
#include "fakes/TemporaryDirectories.h"
#include "platform/Platform.h"

namespace moorline::test {

/// A whole system, faked: one fake of each port, under the port's name and with its own controls.
struct FakePlatform {
private:
    /// The fake that was built for this port.
    template <typename Fake, typename Owner>
    [[nodiscard]] static Fake &fakeOf(const Owner &owner)
    {
        return dynamic_cast<Fake &>(*owner);
    }

public:
    FakePlatform();
    FakePlatform(const FakePlatform &) = delete;
    FakePlatform &operator=(const FakePlatform &) = delete;
    /// Whoever still sleeps wakes, finds its owner gone and ends: a coroutine that nobody resumes is never freed.
    ~FakePlatform();

    /// What is handed to the program.
    Platform ports{
        .clock = makePort<FakeClock>(),
        .screens = makePort<FakeScreens>(),
        .pointer = makePort<FakePointer>(),
        .panelWindow = makePort<FakePanelWindow>(),
        .popupWindows = makePort<FakePopupWindows>(),
        .windowServer = makePort<FakeWindowServer>(),
        .workspace = makePort<FakeWorkspace>(),
        .power = makePort<FakePower>(),
        .statusBar = makePort<FakeStatusBar>(),
        .preferences = makePort<FakePreferences>(),
        .systemDockControl = std::make_unique<FakeSystemDockControl>(),
        .fileManager = std::make_unique<FakeFileManager>(),
        .badgeSource = std::make_unique<FakeBadgeSource>(),
        .trashBin = std::make_unique<FakeTrashBin>(),
        .mediaPlayers = std::make_unique<FakeMediaPlayers>(),
        .accessibility = makePort<FakeAccessibility>(),
        .systemSettings = makePort<FakeSystemSettings>(),
        .instanceClaim = makePort<FakeInstanceClaim>(),
        .directories = makePort<TemporaryDirectories>(),
        .userDefaults = makePort<FakeUserDefaults>(),
        .files = makePort<FakeFiles>(),
        .fileWatch = makePort<FakeFileWatch>(),
        .httpClient = makePort<FakeHttpClient>(),
        .network = makePort<FakeNetwork>(),
        .locationManager = makePort<FakeLocationManager>(),
        .geocoder = makePort<FakeGeocoder>(),
        .appBundles = makePort<FakeAppBundles>(),
        .symbolCatalogue = makePort<FakeSymbolCatalogue>(),
        .icons = makePort<FakeIcons>(),
        .pictures = makePort<FakePictures>(),
        .systemFont = makePort<FakeSystemFont>(),
    };

    FakeClock &clock = fakeOf<FakeClock>(ports.clock);
    FakeScreens &screens = fakeOf<FakeScreens>(ports.screens);
    FakePointer &pointer = fakeOf<FakePointer>(ports.pointer);
    FakePanelWindow &panelWindow = fakeOf<FakePanelWindow>(ports.panelWindow);
    FakePopupWindows &popupWindows = fakeOf<FakePopupWindows>(ports.popupWindows);
    FakeWindowServer &windowServer = fakeOf<FakeWindowServer>(ports.windowServer);
    FakeWorkspace &workspace = fakeOf<FakeWorkspace>(ports.workspace);
    FakePower &power = fakeOf<FakePower>(ports.power);
    FakeStatusBar &statusBar = fakeOf<FakeStatusBar>(ports.statusBar);
    FakePreferences &preferences = fakeOf<FakePreferences>(ports.preferences);
    FakeSystemDockControl &systemDockControl = fakeOf<FakeSystemDockControl>(ports.systemDockControl);
    FakeFileManager &fileManager = fakeOf<FakeFileManager>(ports.fileManager);
    FakeBadgeSource &badgeSource = fakeOf<FakeBadgeSource>(ports.badgeSource);
    FakeTrashBin &trashBin = fakeOf<FakeTrashBin>(ports.trashBin);
    FakeMediaPlayers &mediaPlayers = fakeOf<FakeMediaPlayers>(ports.mediaPlayers);
    FakeAccessibility &accessibility = fakeOf<FakeAccessibility>(ports.accessibility);
    FakeSystemSettings &systemSettings = fakeOf<FakeSystemSettings>(ports.systemSettings);
    FakeInstanceClaim &instanceClaim = fakeOf<FakeInstanceClaim>(ports.instanceClaim);
    TemporaryDirectories &directories = fakeOf<TemporaryDirectories>(ports.directories);
    FakeUserDefaults &userDefaults = fakeOf<FakeUserDefaults>(ports.userDefaults);
    FakeFiles &files = fakeOf<FakeFiles>(ports.files);
    FakeFileWatch &fileWatch = fakeOf<FakeFileWatch>(ports.fileWatch);
    FakeHttpClient &httpClient = fakeOf<FakeHttpClient>(ports.httpClient);
    FakeNetwork &network = fakeOf<FakeNetwork>(ports.network);
    FakeLocationManager &locationManager = fakeOf<FakeLocationManager>(ports.locationManager);
    FakeGeocoder &geocoder = fakeOf<FakeGeocoder>(ports.geocoder);
    FakeAppBundles &appBundles = fakeOf<FakeAppBundles>(ports.appBundles);
    FakeSymbolCatalogue &symbolCatalogue = fakeOf<FakeSymbolCatalogue>(ports.symbolCatalogue);
    FakeIcons &icons = fakeOf<FakeIcons>(ports.icons);
    FakePictures &pictures = fakeOf<FakePictures>(ports.pictures);
    FakeSystemFont &systemFont = fakeOf<FakeSystemFont>(ports.systemFont);
};

} // namespace moorline::test
