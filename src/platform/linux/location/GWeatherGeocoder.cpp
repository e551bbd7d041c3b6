#include "platform/linux/location/GWeatherGeocoder.h"
#include "platform/linux/location/GWeatherPlaces.h"

#include <cmath>

namespace moorline {

namespace {

constexpr int idleTimeMilliseconds = 1000;
// A name takes milliseconds. A disk that does not answer may take for ever.
constexpr int longestJoinMilliseconds = 500;

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
    m_thread->setMaxThreadCount(1);
    m_thread->setExpiryTimeout(idleTimeMilliseconds);
    QObject::connect(
        m_answers.get(), &GWeatherAnswers::found, &m_home,
        [this](const std::optional<Placemark> &place) { answer(place); }, Qt::QueuedConnection);
}

GWeatherGeocoder::~GWeatherGeocoder()
{
    m_thread->clear();
    // One that is stuck is left to itself, with all that it needs: its pool would wait for it.
    if (!m_thread->waitForDone(longestJoinMilliseconds))
        static_cast<void>(m_thread.release());
}

void GWeatherGeocoder::reverseGeocode(double latitude, double longitude, Completion completion)
{
    m_completions.push(std::move(completion));
    m_thread->start(
        [answers = m_answers, latitude, longitude] { Q_EMIT answers->found(placeAt(latitude, longitude)); });
}

void GWeatherGeocoder::answer(const std::optional<Placemark> &place)
{
    const Completion completion = std::move(m_completions.front());
    m_completions.pop();
    completion(place ? QList<Placemark>{*place} : QList<Placemark>{});
}

} // namespace moorline
