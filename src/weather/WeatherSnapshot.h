#pragma once

#include "settings/Settings.h"

#include <QDateTime>
#include <QList>

namespace moorline {

/// One day to come. Temperatures are in the unit that was asked for.
struct DailyForecast {
    /// The day's first moment, in the time zone of the place.
    QDateTime date;
    /// A WMO weather code.
    qint64 weatherCode = 0;
    double tempMax = 0;
    double tempMin = 0;

    bool operator==(const DailyForecast &) const = default;
};

/// The weather of one place at one time.
struct WeatherSnapshot {
    /// In the unit that was asked for, as is the next.
    double temperature = 0;
    double apparentTemperature = 0;
    /// In percent.
    double humidity = 0;
    /// In miles per hour with Fahrenheit, in kilometres per hour with Celsius.
    double windSpeed = 0;
    /// A WMO weather code.
    qint64 weatherCode = 0;
    bool isDay = true;
    /// Today first.
    QList<DailyForecast> daily;
    QDateTime fetchedAt;
    /// Where this is the weather of, whatever place is asked about since.
    WeatherLocation place;

    bool operator==(const WeatherSnapshot &) const = default;
};

} // namespace moorline
