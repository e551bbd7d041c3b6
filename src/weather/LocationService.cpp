#include "weather/LocationService.h"

#include "platform/Geocoder.h"

#include <QTimeZone>
#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

LocationService::Availability availabilityOf(LocationAuthorization authorization)
{
    using Availability = LocationService::Availability;
    switch (authorization) {
    case LocationAuthorization::notDetermined:
        return Availability::notDetermined;
    case LocationAuthorization::restricted:
        return Availability::restricted;
    case LocationAuthorization::authorized:
        return Availability::authorized;
    case LocationAuthorization::denied:
    case LocationAuthorization::unknown:
        return Availability::denied;
    }
    return Availability::denied;
}

/// In either direction: the clock may have been set back since.
bool isFresh(const PositionFix &fix, const QDateTime &now)
{
    return std::chrono::milliseconds(std::abs(fix.timestamp.msecsTo(now))) < LocationService::freshness;
}

QString systemZone()
{
    return QString::fromLatin1(QTimeZone::systemTimeZoneId());
}

WeatherLocation named(const PositionFix &fix, const Placemark &found)
{
    // Out at sea, the nearest town is nobody's.
    const Placemark place = found.distance.value_or(0) > LocationService::farthestName ? Placemark() : found;
    const QString name = place.locality.value_or(
        place.subAdministrativeArea.value_or(place.administrativeArea.value_or(LocationService::unnamedPlace())));
    return {name, place.administrativeArea, place.country, fix.latitude, fix.longitude,
        place.timeZone.value_or(systemZone())};
}

} // namespace

LocationService::LocationService(LocationManager &manager, Geocoder &geocoder, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_manager(manager)
    , m_geocoder(geocoder)
    , m_clock(clock)
{
    connect(&manager, &LocationManager::didUpdateLocations, this, [this](const QList<PositionFix> &fixes) {
        resolvePending(fixes.isEmpty() ? Position() : Position(fixes.last()));
    });
    connect(&manager, &LocationManager::didFail, this, [this] { resolvePending({}); });
    connect(&manager, &LocationManager::didChangeAuthorization, this, &LocationService::noteAuthorization);
    connect(&manager, &LocationManager::didAnswerRequest, this, &LocationService::noteAnswer);
    manager.setDesiredAccuracy(LocationAccuracy::town);
    refreshAvailability();
}

LocationService::~LocationService()
{
    resolvePending({});
}

QString LocationService::unnamedPlace()
{
    return tr("Current location");
}

void LocationService::refreshAvailability()
{
    const Availability availability = m_manager.locationServicesEnabled()
        ? availabilityOf(m_manager.authorizationStatus())
        : Availability::servicesOff;
    if (availability == m_availability)
        return;
    m_availability = availability;
    Q_EMIT availabilityChanged();
}

void LocationService::noteAuthorization()
{
    const QPointer<LocationService> alive(this);
    refreshAvailability();
    if (!alive)
        return;
    if (m_availability == Availability::authorized)
        Q_EMIT authorizationGranted();
    else if (m_availability == Availability::notDetermined)
        adviseAnotherQuestion();
}

void LocationService::noteAnswer()
{
    m_nextQuestion.reset();
    if (m_availability == Availability::authorized) {
        m_questions.granted();
        return;
    }
    m_questions.refused(m_clock.uptime());
    if (m_questions.isWorthARetry())
        m_nextQuestion = m_clock.after(LocationQuestions::retryDelay, [this] { adviseAnotherQuestion(); });
}

/// Where nobody has wanted a location so far there is no refusal either.
void LocationService::adviseAnotherQuestion()
{
    if (m_wasAsked && mayAskUnprompted())
        Q_EMIT anotherQuestionAdvised();
}

bool LocationService::mayAskUnprompted() const
{
    if (m_manager.asksOnce())
        return m_availability == Availability::notDetermined;
    return m_availability != Availability::restricted && m_questions.mayAsk(m_clock.uptime());
}

void LocationService::requestAuthorization()
{
    m_wasAsked = true;
    m_questions.asked(m_clock.uptime());
    m_manager.requestWhenInUseAuthorization();
}

QCoro::Task<std::optional<WeatherLocation>> LocationService::currentLocation(
    std::chrono::milliseconds timeout, std::function<bool()> isWanted)
{
    const QPointer<LocationService> alive(this);
    refreshAvailability();
    if (m_availability != Availability::authorized) {
        if (mayAskUnprompted())
            requestAuthorization();
        co_return std::nullopt;
    }
    const Position fix = co_await requestFix(timeout);
    // Without a fix this may be the end of the service.
    if (!fix || !alive || (isWanted && !isWanted()))
        co_return std::nullopt;
    const WeatherLocation location = co_await describe(*fix);
    if (alive)
        setLastFix(location);
    co_return location;
}

QCoro::Task<std::optional<PositionFix>> LocationService::requestFix(std::chrono::milliseconds timeout)
{
    const Position known = m_manager.location();
    if (known && isFresh(*known, m_clock.now()))
        co_return known;
    const Promise<Position> fix;
    const bool isFirst = m_pendingRequests.isEmpty();
    m_pendingRequests.append(fix);
    m_timeout = m_clock.after(timeout, [this] { resolvePending({}); });
    if (isFirst)
        m_manager.requestLocation();
    co_return co_await fix;
}

void LocationService::resolvePending(const Position &position)
{
    m_timeout.reset();
    // Whoever goes on may ask again at once.
    const auto answered = std::exchange(m_pendingRequests, {});
    for (const Promise<Position> &request : answered)
        request.resolve(position);
}

QCoro::Task<WeatherLocation> LocationService::describe(PositionFix fix)
{
    const Promise<WeatherLocation> location;
    const auto known =
        std::find_if(m_namings.cbegin(), m_namings.cend(), [&fix](const auto &naming) { return naming->fix == fix; });
    if (known != m_namings.cend()) {
        (*known)->waiting.append(location);
    } else {
        m_namings.append(std::make_shared<Naming>(Naming{fix, {location}}));
        findName(m_namings.last());
    }
    co_return co_await location;
}

QCoro::Task<> LocationService::findName(std::shared_ptr<Naming> naming)
{
    const QPointer<LocationService> alive(this);
    const Promise<QList<Placemark>> placemarks;
    m_geocoder.reverseGeocode(naming->fix.latitude, naming->fix.longitude,
        [placemarks](const QList<Placemark> &found) { placemarks.resolve(found); });
    const auto limit = m_clock.after(namingLimit, [placemarks] { placemarks.resolve({}); });
    const WeatherLocation location = named(naming->fix, (co_await placemarks).value(0));
    if (alive)
        m_namings.removeOne(naming);
    // Whoever goes on may ask again at once.
    const auto waiting = std::exchange(naming->waiting, {});
    for (const auto &promise : waiting)
        promise.resolve(location);
}

void LocationService::setLastFix(const WeatherLocation &location)
{
    if (m_lastFix == location)
        return;
    m_lastFix = location;
    Q_EMIT lastFixChanged();
}

} // namespace moorline
