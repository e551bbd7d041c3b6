#pragma once

#include "weather/WeatherReplies.h"

#include <QCoroTask>
#include <QUrl>
#include <memory>

namespace moorline {

class Clock;
class WebSession;

/// Where the weather's web services answer.
struct WeatherEndpoints {
    /// Open-Meteo's forecast and geocoding.
    QUrl forecast;
    QUrl geocoding;
    /// The two that tell where the caller is.
    QUrl ipWho;
    QUrl ipAPI;
    /// Whether there is no way to them without one to the internet.
    bool needInternet = true;
};

/// The questions to the weather's web services. Each is one request of the given session.
class WeatherRequests final {
public:
    using Session = std::shared_ptr<WebSession>;

    WeatherRequests(WeatherEndpoints endpoints, const Clock &clock);

    [[nodiscard]] QCoro::Task<ForecastResult> fetch(Session session, WeatherLocation place, TemperatureUnit unit) const;
    [[nodiscard]] QCoro::Task<std::optional<WeatherLocation>> fetchIPWho(Session session) const;
    [[nodiscard]] QCoro::Task<std::optional<WeatherLocation>> fetchIPAPI(Session session) const;
    /// None on any failure. A blank query finds nothing and asks nobody.
    [[nodiscard]] QCoro::Task<QList<WeatherLocation>> searchCities(Session session, QString query) const;

private:
    WeatherEndpoints m_endpoints;
    const Clock &m_clock;
};

} // namespace moorline
