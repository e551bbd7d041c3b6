#include "app/WeatherServers.h"

namespace moorline {

WeatherEndpoints publicWeatherEndpoints()
{
    return {.forecast = QUrl(QStringLiteral("https://api.open-meteo.com/v1/forecast")),
        .geocoding = QUrl(QStringLiteral("https://geocoding-api.open-meteo.com/v1/search")),
        .ipWho = QUrl(QStringLiteral("https://ipwho.is/")),
        .ipAPI = QUrl(QStringLiteral("https://ipapi.co/json/")),
        .needInternet = true};
}

WeatherEndpoints weatherEndpoints(const QUrl &origin)
{
    const auto at = [&origin](const QString &path) { return origin.resolved(QUrl(path)); };
    return {.forecast = at(QStringLiteral("/v1/forecast")),
        .geocoding = at(QStringLiteral("/v1/search")),
        .ipWho = at(QStringLiteral("/")),
        .ipAPI = at(QStringLiteral("/json/")),
        .needInternet = false};
}

} // namespace moorline
