#pragma once

#include "fakes/FakeClock.h"
#include "fakes/FakeHttpClient.h"
#include "fakes/FakeLocation.h"
#include "fakes/FakePanelWindow.h"
#include "fakes/FakePointer.h"
#include "fakes/FakePreferences.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSystem.h"
#include "fakes/FakeWindowServer.h"
#include "fakes/TemporaryDirectories.h"

#include "dock/DockBarView.h"
#include "dock/DockWindowController.h"
#include "settings/SettingsStore.h"
#include "system/SpaceProbe.h"
#include "system/SystemDock.h"
#include "theme/Symbols.h"
#include "time/TimeKeeper.h"
#include "weather/LocationService.h"
#include "weather/WeatherService.h"

namespace moorline::test {

/// Everything a bar is built on, faked. The desktop's dock hides by itself until told otherwise.
struct DockFixture {
    DockFixture() { preferences.setDock(QStringLiteral("bottom"), true); }

    /// Changes the settings through the store, as every view does.
    template <typename Change>
    void change(Change apply)
    {
        Settings settings = store.settings();
        apply(settings);
        store.setSettings(settings);
    }

    DockBarView::Context barContext()
    {
        return {store, keeper, systemDock, clock, screens, symbols, weather, commands, [this] { return playback; },
            [this] { ++timesWeatherAppOpened; }};
    }

    DockWindowController::Context controllerContext()
    {
        return {store, systemDock, spaceProbe, clock, screens, pointer, windowServer, workspace, panelWindow, false};
    }

    DockWindowController::MakeBar makeBar()
    {
        return [this](std::function<void(qreal)> contentWidthChange) {
            reportContentWidth = contentWidthChange;
            return std::make_unique<DockBarView>(barContext(), std::move(contentWidthChange));
        };
    }

    FakeClock clock;
    FakeScreens screens;
    FakePointer pointer;
    FakePanelWindow panelWindow;
    FakeWindowServer windowServer;
    FakeWorkspace workspace;
    FakePreferences preferences;
    FakeSystemDockControl dockControl;
    FakeSystemSettings systemSettings;
    FakeSystemImages images;
    TemporaryDirectories directories;
    SettingsStore store{directories, QStringLiteral("app"), [](const QUrl &) { return std::nullopt; }};
    TimeKeeper keeper{clock};
    SystemDock systemDock{preferences, windowServer, dockControl, systemSettings};
    SpaceProbe spaceProbe{windowServer};
    Symbols symbols{images};
    FakeHttpClient httpClient;
    FakeLocationManager locationManager;
    FakeGeocoder geocoder;
    LocationService location{locationManager, geocoder, clock};
    WeatherService weather{{store, clock, httpClient, location, WeatherEndpoints(), false}};
    int timesWeatherAppOpened = 0;
    BarCommands commands;
    Playback playback;
    /// What the controller gave the bar it built.
    std::function<void(qreal)> reportContentWidth;
};

} // namespace moorline::test
