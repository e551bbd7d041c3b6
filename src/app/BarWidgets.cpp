#include "app/BarWidgets.h"

#include "app/Services.h"
#include "time/CalendarWidget.h"
#include "time/ClockWidget.h"
#include "time/MonthCounterWidget.h"
#include "weather/ForecastWidget.h"
#include "weather/WeatherWidget.h"

namespace moorline {

namespace {

WeatherTile::Context weatherContext(const Services &services)
{
    // There is no weather application to open yet.
    return {.service = services.weather, .symbols = services.symbols, .openWeatherApp = nullptr};
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
        return std::make_unique<ForecastWidget>(weatherContext(services));
    case WidgetKind::music:
    case WidgetKind::appShortcut:
    case WidgetKind::recentApps:
    case WidgetKind::pinnedItems:
        break;
    }
    return nullptr;
}

} // namespace moorline
