#include "platform/linux/location/GWeatherGeocoder.h"
#include "platform/linux/location/GWeatherPlaces.h"

#include <cmath>

namespace moorline {

namespace {

constexpr int idleTimeMilliseconds = 1000;

/// False also for what is not a number.
bool isOnEarth(double latitude, double longitude)
{
    return std::abs(latitude) <= 90 && std::abs(longitude) <= 180;
}

std::optional<Placemark> placeAt(double latitude, double longitude)
{
    return isOnEarth(latitude, longitude) ? nearestCity(latitude, longitude) : std::nullopt;
}

} // namespace

GWeatherGeocoder::GWeatherGeocoder()
{
    m_thread.setMaxThreadCount(1);
    m_thread.setExpiryTimeout(idleTimeMilliseconds);
}

GWeatherGeocoder::~GWeatherGeocoder()
{
    m_thread.clear();
    m_thread.waitForDone();
}

void GWeatherGeocoder::reverseGeocode(double latitude, double longitude, Completion completion)
{
    m_completions.push(std::move(completion));
    m_thread.start([this, latitude, longitude] {
        const auto place = placeAt(latitude, longitude);
        QMetaObject::invokeMethod(
            &m_home, [this, place] { answer(place); }, Qt::QueuedConnection);
    });
}

void GWeatherGeocoder::answer(const std::optional<Placemark> &place)
{
    const Completion completion = std::move(m_completions.front());
    m_completions.pop();
    completion(place ? QList<Placemark>{*place} : QList<Placemark>{});
}

} // namespace moorline
