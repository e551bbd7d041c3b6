#include "weather/WeatherIcon.h"

#include <QCoreApplication>
#include <algorithm>

namespace moorline::WeatherIcon {

namespace {

struct Row {
    qint64 code;
    const char *description;
    QLatin1StringView day;
    QLatin1StringView night;
};

constexpr QLatin1StringView sun("sun.max.fill");
constexpr QLatin1StringView moon("moon.stars.fill");
constexpr QLatin1StringView cloudAndSun("cloud.sun.fill");
constexpr QLatin1StringView cloudAndMoon("cloud.moon.fill");
constexpr QLatin1StringView cloud("cloud.fill");
constexpr QLatin1StringView fog("cloud.fog.fill");
constexpr QLatin1StringView drizzle("cloud.drizzle.fill");
constexpr QLatin1StringView sleet("cloud.sleet.fill");
constexpr QLatin1StringView rain("cloud.rain.fill");
constexpr QLatin1StringView heavyRain("cloud.heavyrain.fill");
constexpr QLatin1StringView snow("cloud.snow.fill");
constexpr QLatin1StringView bolt("cloud.bolt.fill");
constexpr QLatin1StringView boltAndRain("cloud.bolt.rain.fill");

constexpr Row rows[] = {
    {0, QT_TRANSLATE_NOOP("WeatherIcon", "Clear"), sun, moon},
    {1, QT_TRANSLATE_NOOP("WeatherIcon", "Mainly clear"), cloudAndSun, cloudAndMoon},
    {2, QT_TRANSLATE_NOOP("WeatherIcon", "Partly cloudy"), cloudAndSun, cloudAndMoon},
    {3, QT_TRANSLATE_NOOP("WeatherIcon", "Overcast"), cloud, cloud},
    {45, QT_TRANSLATE_NOOP("WeatherIcon", "Fog"), fog, fog},
    {48, QT_TRANSLATE_NOOP("WeatherIcon", "Fog"), fog, fog},
    {51, QT_TRANSLATE_NOOP("WeatherIcon", "Drizzle"), drizzle, drizzle},
    {53, QT_TRANSLATE_NOOP("WeatherIcon", "Drizzle"), drizzle, drizzle},
    {55, QT_TRANSLATE_NOOP("WeatherIcon", "Drizzle"), drizzle, drizzle},
    {56, QT_TRANSLATE_NOOP("WeatherIcon", "Freezing drizzle"), sleet, sleet},
    {57, QT_TRANSLATE_NOOP("WeatherIcon", "Freezing drizzle"), sleet, sleet},
    {61, QT_TRANSLATE_NOOP("WeatherIcon", "Rain"), rain, rain},
    {63, QT_TRANSLATE_NOOP("WeatherIcon", "Rain"), rain, rain},
    {65, QT_TRANSLATE_NOOP("WeatherIcon", "Rain"), rain, rain},
    {66, QT_TRANSLATE_NOOP("WeatherIcon", "Freezing rain"), sleet, sleet},
    {67, QT_TRANSLATE_NOOP("WeatherIcon", "Freezing rain"), sleet, sleet},
    {71, QT_TRANSLATE_NOOP("WeatherIcon", "Snow"), snow, snow},
    {73, QT_TRANSLATE_NOOP("WeatherIcon", "Snow"), snow, snow},
    {75, QT_TRANSLATE_NOOP("WeatherIcon", "Snow"), snow, snow},
    {77, QT_TRANSLATE_NOOP("WeatherIcon", "Snow"), snow, snow},
    {80, QT_TRANSLATE_NOOP("WeatherIcon", "Rain showers"), heavyRain, heavyRain},
    {81, QT_TRANSLATE_NOOP("WeatherIcon", "Rain showers"), heavyRain, heavyRain},
    {82, QT_TRANSLATE_NOOP("WeatherIcon", "Rain showers"), heavyRain, heavyRain},
    {85, QT_TRANSLATE_NOOP("WeatherIcon", "Snow showers"), snow, snow},
    {86, QT_TRANSLATE_NOOP("WeatherIcon", "Snow showers"), snow, snow},
    {95, QT_TRANSLATE_NOOP("WeatherIcon", "Thunderstorm"), bolt, bolt},
    {96, QT_TRANSLATE_NOOP("WeatherIcon", "Thunderstorm"), boltAndRain, boltAndRain},
    {99, QT_TRANSLATE_NOOP("WeatherIcon", "Thunderstorm"), boltAndRain, boltAndRain},
};

constexpr Row unknown{-1, "—", cloud, cloud};

const Row &row(qint64 code)
{
    const auto *found =
        std::find_if(std::begin(rows), std::end(rows), [code](const Row &row) { return row.code == code; });
    return found == std::end(rows) ? unknown : *found;
}

} // namespace

QString symbol(qint64 code, bool isDay)
{
    return isDay ? row(code).day : row(code).night;
}

QString description(qint64 code)
{
    return QCoreApplication::translate("WeatherIcon", row(code).description);
}

} // namespace moorline::WeatherIcon
