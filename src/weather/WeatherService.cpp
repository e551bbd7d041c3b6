#include "weather/WeatherService.h"

#include "platform/Network.h"
#include "settings/SettingsStore.h"
#include "support/DecimalText.h"
#include "weather/LocationStatus.h"
#include "weather/WeatherDisplay.h"
#include "weather/WebSession.h"

#include <QDebug>

namespace moorline {

namespace {

/// Assigns a value and tells whether it was another one.
template <typename Value>
bool replace(Value &current, const Value &value)
{
    if (current == value)
        return false;
    current = value;
    return true;
}

/// Gives up what the old session does and puts a new one in its place.
std::shared_ptr<WebSession> renew(std::shared_ptr<WebSession> &session, HttpClient &client)
{
    const auto old = std::exchange(session, std::make_shared<WebSession>(client));
    auto fresh = session;
    if (old)
        old->cancel();
    return fresh;
}

} // namespace

QString text(WeatherService::LocationSource source)
{
    switch (source) {
    case WeatherService::LocationSource::locationServices:
        return WeatherService::tr("Location Services");
    case WeatherService::LocationSource::ipAddress:
        return WeatherService::tr("IP address");
    case WeatherService::LocationSource::manual:
        return WeatherService::tr("Chosen city");
    }
    Q_UNREACHABLE();
}

WeatherService::WeatherService(Context context, QObject *parent)
    : QObject(parent)
    , m_context(std::move(context))
    , m_requests(m_context.endpoints, m_context.clock)
    , m_retries(m_context.clock, [this] { refreshAgain(); })
{
}

WeatherService::~WeatherService()
{
    for (const Session &session : {m_refresh, m_search}) {
        if (session)
            session->cancel();
    }
}

void WeatherService::start()
{
    m_timer = m_context.clock.every(refreshInterval, [this] { refreshAgain(); });
    connect(&m_context.store, &SettingsStore::settingsDidChange, this, &WeatherService::refresh);
    refresh();
}

QCoro::Task<> WeatherService::refresh()
{
    m_retries.reset();
    co_await refreshAgain();
}

void WeatherService::refreshIfReachable()
{
    if (!m_context.endpoints.needInternet || m_context.network.isReachable())
        refresh();
}

QCoro::Task<> WeatherService::refreshAgain()
{
    m_retries.pause();
    co_await run(renew(m_refresh, m_context.client));
}

QCoro::Task<QList<WeatherLocation>> WeatherService::searchCities(QString query)
{
    co_return co_await m_requests.searchCities(renew(m_search, m_context.client), std::move(query));
}

// A session is cancelled when another takes its place and when the service ends: after each wait it tells whether this
// work is still wanted, and whether there is still a service to do it for.
QCoro::Task<> WeatherService::run(Session session)
{
    const Settings settings = m_context.store.settings();
    const Place place = co_await locate(session, settings);
    if (session->isCancelled())
        co_return;
    setPlace(place);
    // Whoever heard of the place may have begun another refresh.
    if (session->isCancelled())
        co_return;
    if (place.source == LocationSource::ipAddress)
        scheduleLocationRetry();
    logPlace();
    const ForecastResult result = co_await m_requests.fetch(session, place.location, settings.temperatureUnit);
    if (session->isCancelled())
        co_return;
    const bool isLastResort = settings.useCurrentLocation && place.source == LocationSource::manual;
    noteOutcome(std::holds_alternative<WeatherSnapshot>(result) && !isLastResort);
    setResult(result);
}

QCoro::Task<WeatherService::Place> WeatherService::locate(Session session, Settings settings)
{
    const Place chosen{LocationSource::manual, settings.location};
    if (!settings.useCurrentLocation)
        co_return chosen;
    // In a statement of its own: a closure made within the wait is destroyed twice by GCC 12.
    auto asking = m_context.location.currentLocation(locationTimeout, [session] { return !session->isCancelled(); });
    const auto fix = co_await std::move(asking);
    if (session->isCancelled())
        co_return chosen;
    if (fix)
        co_return Place{LocationSource::locationServices, *fix};
    auto caller = co_await m_requests.fetchIPWho(session);
    if (!caller && !session->isCancelled()) {
        caller = co_await m_requests.fetchIPAPI(session);
    }
    co_return caller ? Place{LocationSource::ipAddress, *caller} : chosen;
}

void WeatherService::scheduleLocationRetry()
{
    const bool isAllowed = m_context.location.availability() == LocationService::Availability::authorized;
    if (!isAllowed || m_locationRetriesRemaining < 1)
        return;
    --m_locationRetriesRemaining;
    m_locationRetries.push_back(m_context.clock.after(locationRetryDelay, [this] { refreshAgain(); }));
}

void WeatherService::noteOutcome(bool isGood)
{
    if (isGood)
        m_retries.reset();
    else
        m_retries.noteFailure();
}

void WeatherService::setPlace(const Place &place)
{
    // Both before either is announced: they belong together.
    const bool isOtherSource = replace(m_locationSource, place.source);
    const bool isOtherLocation = replace(m_resolvedLocation, std::optional(place.location));
    if (isOtherSource)
        Q_EMIT locationSourceChanged();
    if (isOtherLocation)
        Q_EMIT resolvedLocationChanged();
}

void WeatherService::setResult(const ForecastResult &result)
{
    if (const auto *failure = std::get_if<WeatherFailure>(&result)) {
        setLastError(failure->description);
        return;
    }
    const bool isOther = replace(m_snapshot, std::optional(std::get<WeatherSnapshot>(result)));
    setLastError(std::nullopt);
    if (isOther)
        Q_EMIT snapshotChanged();
}

void WeatherService::setLastError(const std::optional<QString> &error)
{
    if (replace(m_lastError, error))
        Q_EMIT lastErrorChanged();
}

void WeatherService::logPlace() const
{
    if (!m_context.debug)
        return;
    qInfo().noquote() << QStringLiteral("Moorline: location source=%1 auth=%2 city=%3 lat=%4 lon=%5")
                             .arg(text(m_locationSource), caseName(m_context.location.availability()),
                                 oneLine(m_resolvedLocation->name), decimalText(m_resolvedLocation->latitude),
                                 decimalText(m_resolvedLocation->longitude));
}

} // namespace moorline
