#pragma once

#include "weather/WeatherSnapshot.h"

#include <optional>

namespace moorline {

/// What the widget of the current weather shows.
struct WeatherDisplay {
    /// A name of the symbol catalogue; empty for none.
    QString symbol;
    QString temperature;
    /// The place whose weather this is, or how it stands with the weather while there is none.
    QString caption;
    QString helpText;

    bool operator==(const WeatherDisplay &) const = default;
};

/// What the widget of the days to come shows of one of them.
struct ForecastColumn {
    QString weekday;
    QString symbol;
    QString maximum;
    QString minimum;

    bool operator==(const ForecastColumn &) const = default;
};

/// A text that came from outside, as one line without control characters.
[[nodiscard]] QString oneLine(const QString &text);
/// Rounded to a whole number, halves away from zero: "22°", "-3°", and never "-0°".
[[nodiscard]] QString degrees(double temperature);
/// Absent values are those of a service that has no answer or no failure yet.
[[nodiscard]] WeatherDisplay weatherDisplay(
    const std::optional<WeatherSnapshot> &snapshot, const std::optional<QString> &error);
/// Today and the next two days, as far as they are known.
[[nodiscard]] QList<ForecastColumn> upcoming(const std::optional<WeatherSnapshot> &snapshot);

} // namespace moorline
