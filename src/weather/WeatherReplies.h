#pragma once

#include "weather/WeatherSnapshot.h"

#include <variant>

namespace moorline {

struct HttpAnswer;

enum class WeatherError { badResponse, missingCurrent };
/// In the user's language.
[[nodiscard]] QString errorDescription(WeatherError error);

/// Why there is no forecast, in the user's language.
struct WeatherFailure {
    QString description;

    bool operator==(const WeatherFailure &) const = default;
};
using ForecastResult = std::variant<WeatherSnapshot, WeatherFailure>;

/// What Open-Meteo's forecast for `place` says (https://open-meteo.com/en/docs), taken down at `now`.
[[nodiscard]] ForecastResult decodeForecast(
    const HttpAnswer &answer, const WeatherLocation &place, const QDateTime &now);
/// The places Open-Meteo's geocoding found (https://open-meteo.com/en/docs/geocoding-api), best first. None when the
/// answer cannot be read.
[[nodiscard]] QList<WeatherLocation> decodeCities(const HttpAnswer &answer);
/// Where ipwho.is (https://ipwhois.io/documentation) places the caller. Absent when it does not, or cannot be read.
[[nodiscard]] std::optional<WeatherLocation> decodeIPWho(const HttpAnswer &answer);
/// Where ipapi.co (https://ipapi.co/api) places the caller. Absent when it does not, or cannot be read.
[[nodiscard]] std::optional<WeatherLocation> decodeIPAPI(const HttpAnswer &answer);

} // namespace moorline
