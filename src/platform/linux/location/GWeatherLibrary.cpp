#include "platform/linux/location/GWeatherLibrary.h"

namespace moorline {

GWeatherLibrary::GWeatherLibrary()
    : m_library(QStringLiteral("gweather-4"), 0)
{
    m_library.setLoadHints(QLibrary::PreventUnloadHint);
    m_isComplete = resolve(world, "gweather_location_get_world")
        && resolve(nearestCity, "gweather_location_find_nearest_city")
        && resolve(hasCoordinates, "gweather_location_has_coords")
        && resolve(coordinates, "gweather_location_get_coords") && resolve(parent, "gweather_location_get_parent")
        && resolve(level, "gweather_location_get_level") && resolve(name, "gweather_location_get_name")
        && resolve(cityName, "gweather_location_get_city_name")
        && resolve(countryName, "gweather_location_get_country_name")
        && resolve(timeZone, "gweather_location_get_timezone_str");
}

template <typename Function>
bool GWeatherLibrary::resolve(Function &function, const char *symbol)
{
    function = reinterpret_cast<Function>(m_library.resolve(symbol));
    return function != nullptr;
}

} // namespace moorline
