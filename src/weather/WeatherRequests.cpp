#include "weather/WeatherRequests.h"

#include "platform/Clock.h"
#include "support/DecimalText.h"
#include "weather/WebSession.h"

#include <QUrlQuery>

namespace moorline {

namespace {

struct Units {
    QString temperature;
    QString windSpeed;
};

Units units(TemperatureUnit unit)
{
    switch (unit) {
    case TemperatureUnit::fahrenheit:
        return {QStringLiteral("fahrenheit"), QStringLiteral("mph")};
    case TemperatureUnit::celsius:
        return {QStringLiteral("celsius"), QStringLiteral("kmh")};
    }
    Q_UNREACHABLE();
}

QUrl withQuery(QUrl endpoint, const QList<std::pair<QString, QString>> &items)
{
    QUrlQuery query;
    query.setQueryItems(items);
    endpoint.setQuery(query);
    return endpoint;
}

QUrl forecastUrl(const QUrl &endpoint, const WeatherLocation &place, TemperatureUnit unit)
{
    return withQuery(endpoint,
        {{QStringLiteral("latitude"), decimalText(place.latitude)},
            {QStringLiteral("longitude"), decimalText(place.longitude)},
            {QStringLiteral("current"),
                QStringLiteral("temperature_2m,relative_humidity_2m,apparent_temperature,is_day,weather_code,"
                               "wind_speed_10m")},
            {QStringLiteral("daily"), QStringLiteral("weather_code,temperature_2m_max,temperature_2m_min")},
            {QStringLiteral("timezone"), QStringLiteral("auto")},
            {QStringLiteral("forecast_days"), QStringLiteral("4")},
            {QStringLiteral("temperature_unit"), units(unit).temperature},
            {QStringLiteral("wind_speed_unit"), units(unit).windSpeed}});
}

QUrl searchUrl(const QUrl &endpoint, const QString &query)
{
    return withQuery(endpoint,
        // Encoded here, because a plus or an ampersand of the text would otherwise be read as part of the query.
        {{QStringLiteral("name"), QString::fromLatin1(QUrl::toPercentEncoding(query))},
            {QStringLiteral("count"), QStringLiteral("8")}, {QStringLiteral("language"), QStringLiteral("en")},
            {QStringLiteral("format"), QStringLiteral("json")}});
}

} // namespace

WeatherRequests::WeatherRequests(WeatherEndpoints endpoints, const Clock &clock)
    : m_endpoints(std::move(endpoints))
    , m_clock(clock)
{
}

QCoro::Task<ForecastResult> WeatherRequests::fetch(Session session, WeatherLocation place, TemperatureUnit unit) const
{
    // The clock lives as long as the program, whoever asked meanwhile may be gone.
    const Clock &clock = m_clock;
    const HttpAnswer answer = co_await session->get(forecastUrl(m_endpoints.forecast, place, unit));
    co_return decodeForecast(answer, place, clock.now());
}

QCoro::Task<std::optional<WeatherLocation>> WeatherRequests::fetchIPWho(Session session) const
{
    co_return decodeIPWho(co_await session->get(m_endpoints.ipWho));
}

QCoro::Task<std::optional<WeatherLocation>> WeatherRequests::fetchIPAPI(Session session) const
{
    co_return decodeIPAPI(co_await session->get(m_endpoints.ipAPI));
}

QCoro::Task<QList<WeatherLocation>> WeatherRequests::searchCities(Session session, QString query) const
{
    const QString trimmed = query.trimmed();
    if (trimmed.isEmpty())
        co_return QList<WeatherLocation>();
    co_return decodeCities(co_await session->get(searchUrl(m_endpoints.geocoding, trimmed)));
}

} // namespace moorline
