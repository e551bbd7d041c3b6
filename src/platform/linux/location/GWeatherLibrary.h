#pragma once

#include <QLibrary>
#include <libgweather/gweather.h>

namespace moorline {

/// The functions of libgweather that this program calls. Linked, it and the sixteen libraries it brings would make the
/// start slower by a fifth for what is asked a few times an hour at most, so it is loaded when it is needed.
class GWeatherLibrary {
public:
    /// Loads the library unless it is there already. It stays: types of GObject cannot be taken back.
    GWeatherLibrary();

    /// Whether it is installed, with all of these functions.
    [[nodiscard]] bool isComplete() const { return m_isComplete; }

    decltype(&gweather_location_get_world) world = nullptr;
    decltype(&gweather_location_find_nearest_city) nearestCity = nullptr;
    decltype(&gweather_location_has_coords) hasCoordinates = nullptr;
    decltype(&gweather_location_get_coords) coordinates = nullptr;
    decltype(&gweather_location_get_parent) parent = nullptr;
    decltype(&gweather_location_get_level) level = nullptr;
    decltype(&gweather_location_get_name) name = nullptr;
    decltype(&gweather_location_get_city_name) cityName = nullptr;
    decltype(&gweather_location_get_country_name) countryName = nullptr;
    decltype(&gweather_location_get_timezone_str) timeZone = nullptr;

private:
    template <typename Function>
    bool resolve(Function &function, const char *symbol);

    QLibrary m_library;
    bool m_isComplete;
};

} // namespace moorline
