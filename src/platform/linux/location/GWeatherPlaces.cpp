#include "platform/linux/location/GWeatherPlaces.h"
#include "platform/linux/glib/GObjectPointer.h"
#include "platform/linux/location/GWeatherLibrary.h"

namespace moorline {

namespace {

using LocationPointer = GObjectPointer<GWeatherLocation>;

std::optional<QString> text(const char *utf8)
{
    return utf8 && *utf8 ? std::optional(QString::fromUtf8(utf8)) : std::nullopt;
}

/// The name of the state, province or similar that the city is in, where its country is divided into such.
std::optional<QString> division(const GWeatherLibrary &library, GWeatherLocation *city)
{
    for (LocationPointer place(library.parent(city)); place; place.reset(library.parent(place.get()))) {
        if (library.level(place.get()) == GWEATHER_LOCATION_ADM1)
            return text(library.name(place.get()));
    }
    return {};
}

Placemark placemark(const GWeatherLibrary &library, GWeatherLocation *city)
{
    const GLibPointer<gchar> cityName(library.cityName(city));
    const GLibPointer<gchar> countryName(library.countryName(city));
    return {
        .locality = text(cityName.get()),
        .subAdministrativeArea = {},
        .administrativeArea = division(library, city),
        .country = text(countryName.get()),
        .timeZone = text(library.timeZone(city)),
    };
}

} // namespace

std::optional<Placemark> nearestCity(double latitude, double longitude)
{
    const GWeatherLibrary library;
    if (!library.isComplete())
        return {};
    const LocationPointer world(library.world());
    if (!world)
        return {};
    const LocationPointer city(library.nearestCity(world.get(), latitude, longitude));
    return city ? std::optional(placemark(library, city.get())) : std::nullopt;
}

} // namespace moorline
