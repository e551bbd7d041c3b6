#include "app/BarWidgets.h"

#include "app/Services.h"
#include "apps/AppShortcutsWidget.h"
#include "apps/RecentAppsWidget.h"
#include "dock/DockBarView.h"
#include "files/PinnedItemsWidget.h"
#include "music/MusicWidget.h"
#include "time/CalendarWidget.h"
#include "time/ClockWidget.h"
#include "time/MonthCounterWidget.h"
#include "weather/ForecastWidget.h"
#include "weather/WeatherWidget.h"

namespace moorline {

namespace {

WeatherTile::Context weatherContext(Services &services)
{
    const auto open = [&services] {
        const Settings &settings = services.store.settings();
        services.launcher.openWeatherApp(services.weather.resolvedLocation().value_or(settings.location));
    };
    return {
        .service = services.weather, .symbols = services.symbols, .openWeatherApp = open, .destination = [&services] {
            return services.launcher.weatherDestination();
        }};
}

std::unique_ptr<BarWidget> makeForecast(Services &services)
{
    auto forecast = std::make_unique<ForecastWidget>(weatherContext(services));
    QObject::connect(
        services.platform.appBundles.get(), &AppBundles::changed, forecast.get(), &ForecastWidget::destinationChanged);
    return forecast;
}

DragOffWatcher::PanelFrame panelFrame(const Services &services)
{
    return [panel = services.platform.panelWindow.get()] { return std::optional(panel->frame()); };
}

FilesContext filesContext(Services &services)
{
    return {.store = services.store,
        .workspace = *services.platform.workspace,
        .files = *services.platform.files,
        .directories = *services.platform.directories,
        .trashBin = trashBin(services.platform, services.scriptedTrashBin),
        .icons = services.icons,
        .symbols = services.symbols,
        .stage = services.barStage,
        .clock = *services.platform.clock,
        .pointer = *services.platform.pointer,
        .panelFrame = panelFrame(services)};
}

AppShortcutButton::Context appsContext(Services &services)
{
    return {.store = services.store,
        .launcher = services.launcher,
        .bundles = *services.platform.appBundles,
        .running = services.runningApps,
        .badges = services.badges,
        .icons = services.icons,
        .stage = services.barStage,
        .clock = *services.platform.clock,
        .pointer = *services.platform.pointer,
        .panelFrame = panelFrame(services)};
}

MusicWidget::Context musicContext(Services &services)
{
    return {.store = services.store,
        .service = services.nowPlaying,
        .keeper = services.timeKeeper,
        .covers = services.covers,
        .symbols = services.symbols};
}

Playback playback(const NowPlayingService &service)
{
    return {.isPlaying = service.current().isPlaying, .lastPlaybackAt = service.lastPlaybackAt()};
}

} // namespace

std::unique_ptr<BarWidget> makeBarWidget(WidgetKind kind, Services &services)
{
    switch (kind) {
    case WidgetKind::clock:
        return std::make_unique<ClockWidget>(services.store, services.timeKeeper);
    case WidgetKind::calendar:
        return std::make_unique<CalendarWidget>(services.timeKeeper);
    case WidgetKind::monthCounter:
        return std::make_unique<MonthCounterWidget>(services.timeKeeper);
    case WidgetKind::weather:
        return std::make_unique<WeatherWidget>(weatherContext(services));
    case WidgetKind::forecast:
        return makeForecast(services);
    case WidgetKind::appShortcut:
        return std::make_unique<AppShortcutsWidget>(appsContext(services));
    case WidgetKind::recentApps:
        return std::make_unique<RecentAppsWidget>(services.recentApps, appsContext(services));
    case WidgetKind::pinnedItems:
        return std::make_unique<PinnedItemsWidget>(filesContext(services));
    case WidgetKind::music:
        return std::make_unique<MusicWidget>(musicContext(services));
    }
    Q_UNREACHABLE();
}

std::unique_ptr<DockBarView> makeBar(
    Services &services, const BarCommands &commands, std::function<void(qreal)> contentWidthChange)
{
    const RecentAppsService &recentApps = services.recentApps;
    auto bar = std::make_unique<DockBarView>(
        DockBarView::Context{
            .store = services.store,
            .systemDock = services.systemDock,
            .clock = *services.platform.clock,
            .screens = *services.platform.screens,
            .symbols = services.symbols,
            .stage = services.barStage,
            .commands = commands,
            .makeWidget = [&services](WidgetKind kind) { return makeBarWidget(kind, services); },
            .playback = [&services] { return playback(services.nowPlaying); },
            .recentApps = [&recentApps] { return recentApps.recent().size(); },
        },
        std::move(contentWidthChange));
    QObject::connect(&recentApps, &RecentAppsService::recentChanged, bar.get(), &DockBarView::recentAppsChanged);
    return bar;
}

} // namespace moorline
