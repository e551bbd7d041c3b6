#include "platform/linux/location/GWeatherPlaces.h"
#include "platform/linux/glib/GObjectPointer.h"
#include "platform/linux/location/GWeatherLibrary.h"

#include <QtMath>
#include <algorithm>
#include <cmath>

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

/// Between two places on earth in degrees, along its surface.
double kilometresBetween(double latitude, double longitude, double otherLatitude, double otherLongitude)
{
    constexpr double radiusOfEarth = 6371;
    const auto squaredHalfChord = [](double degrees) { return std::pow(std::sin(qDegreesToRadians(degrees) / 2), 2); };
    const double square = squaredHalfChord(otherLatitude - latitude)
        + std::cos(qDegreesToRadians(latitude)) * std::cos(qDegreesToRadians(otherLatitude))
            * squaredHalfChord(otherLongitude - longitude);
    return 2 * radiusOfEarth * std::asin(std::sqrt(std::min(square, 1.0)));
}

std::optional<double> distance(
    const GWeatherLibrary &library, GWeatherLocation *city, double latitude, double longitude)
{
    if (!library.hasCoordinates(city))
        return {};
    double cityLatitude = 0;
    double cityLongitude = 0;
    library.coordinates(city, &cityLatitude, &cityLongitude);
    return kilometresBetween(latitude, longitude, cityLatitude, cityLongitude);
}

Placemark placemark(const GWeatherLibrary &library, GWeatherLocation *city, double latitude, double longitude)
{
    const GLibPointer<gchar> cityName(library.cityName(city));
    const GLibPointer<gchar> countryName(library.countryName(city));
    return {
        .locality = text(cityName.get()),
        .subAdministrativeArea = {},
        .administrativeArea = division(library, city),
        .country = text(countryName.get()),
        .timeZone = text(library.timeZone(city)),
        .distance = distance(library, city, latitude, longitude),
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
    return city ? std::optional(placemark(library, city.get(), latitude, longitude)) : std::nullopt;
}

} // namespace moorline
