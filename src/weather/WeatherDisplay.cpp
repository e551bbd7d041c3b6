#include "weather/WeatherDisplay.h"

#include "support/WeekdayText.h"
#include "weather/WeatherIcon.h"

#include <QCoreApplication>
#include <cmath>

namespace moorline {

namespace {

constexpr qsizetype mostColumns = 3;

QString translated(const char *text)
{
    return QCoreApplication::translate("WeatherWidget", text);
}

WeatherDisplay withoutWeather(bool hasFailed)
{
    return {QString(), QStringLiteral("—°"),
        hasFailed ? translated(QT_TRANSLATE_NOOP("WeatherWidget", "Unavailable"))
                  : translated(QT_TRANSLATE_NOOP("WeatherWidget", "Loading")),
        translated(QT_TRANSLATE_NOOP("WeatherWidget", "Weather"))};
}

QString helpText(const WeatherSnapshot &snapshot)
{
    return WeatherIcon::description(snapshot.weatherCode) + u'\n'
        + translated(QT_TRANSLATE_NOOP("WeatherWidget", "Feels like %1")).arg(degrees(snapshot.apparentTemperature));
}

ForecastColumn column(const DailyForecast &day)
{
    return {weekdayString(day.date.date()), WeatherIcon::symbol(day.weatherCode, true), degrees(day.tempMax),
        degrees(day.tempMin)};
}

} // namespace

QString oneLine(const QString &text)
{
    QString line = text.simplified();
    return line.removeIf([](QChar character) { return character.category() == QChar::Other_Control; });
}

QString degrees(double temperature)
{
    return QString::number(qint64(std::round(temperature))) + u'°';
}

WeatherDisplay weatherDisplay(const std::optional<WeatherSnapshot> &snapshot, const std::optional<QString> &error)
{
    if (!snapshot)
        return withoutWeather(error.has_value());
    const QString place = oneLine(snapshot->place.name);
    return {WeatherIcon::symbol(snapshot->weatherCode, snapshot->isDay), degrees(snapshot->temperature),
        place.isEmpty() ? QStringLiteral("—") : place, helpText(*snapshot)};
}

QList<ForecastColumn> upcoming(const std::optional<WeatherSnapshot> &snapshot)
{
    QList<ForecastColumn> columns;
    const QList<DailyForecast> days =
        snapshot ? snapshot->daily.first(std::min(mostColumns, snapshot->daily.size())) : QList<DailyForecast>();
    for (const DailyForecast &day : days)
        columns.append(column(day));
    return columns;
}

} // namespace moorline
