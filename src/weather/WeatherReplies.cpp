#include "weather/WeatherReplies.h"

#include "platform/HttpClient.h"
#include "support/JsonFields.h"
#include "weather/LocationService.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTimeZone>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logReplies, "moorline.weather.replies", QtInfoMsg)

constexpr int statusOK = 200;
/// Beyond any temperature, humidity or wind speed on Earth, and far inside what can be rounded to an integer.
constexpr double largestMeasure = 10'000;
constexpr double largestLatitude = 90;
constexpr double largestLongitude = 180;

WeatherFailure unreadable(const QString &reason)
{
    qCDebug(logReplies) << "unreadable answer:" << reason;
    return {QCoreApplication::translate(
        "WeatherReplies", "The data couldn’t be read because it isn’t in the correct format.")};
}

std::optional<QJsonObject> jsonObject(const HttpAnswer &answer)
{
    if (answer.failure)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(answer.body);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

bool isZoneName(const QString &name)
{
    // A name becomes a path below the system's zones. Without a slash Qt takes folders and rules for zones as well.
    static const QRegularExpression path(QStringLiteral(R"(\A[A-Za-z0-9_+-]+(/[A-Za-z0-9_+-]+)+\z)"));
    return name == QLatin1StringView("GMT") || path.match(name).hasMatch()
        || QTimeZone::isTimeZoneIdAvailable(name.toLatin1());
}

/// Invalid for what is no known IANA name.
QTimeZone zoneNamed(const QString &name)
{
    return isZoneName(name) ? QTimeZone(name.toLatin1()) : QTimeZone();
}

/// In an unknown zone the day begins as it does here.
QDateTime startOf(const QDate &day, const QTimeZone &zone)
{
    return zone.isValid() ? day.startOfDay(zone) : day.startOfDay();
}

template <typename Value>
Value valueAt(const std::optional<QList<Value>> &values, qsizetype index)
{
    return values ? values->value(index) : Value();
}

QList<DailyForecast> readDays(JsonFields &fields, const QTimeZone &zone)
{
    const auto days = fields.optionalTexts(QLatin1StringView("time"));
    const auto codes = fields.optionalIntegers(QLatin1StringView("weather_code"));
    const auto maxima = fields.optionalNumbers(QLatin1StringView("temperature_2m_max"), largestMeasure);
    const auto minima = fields.optionalNumbers(QLatin1StringView("temperature_2m_min"), largestMeasure);
    QList<DailyForecast> forecast;
    for (qsizetype i = 0; days && i < days->size(); ++i) {
        const QDate day = QDate::fromString(days->at(i), QStringLiteral("yyyy-MM-dd"));
        if (day.isValid())
            forecast.append({startOf(day, zone), valueAt(codes, i), valueAt(maxima, i), valueAt(minima, i)});
    }
    return forecast;
}

WeatherSnapshot readCurrent(JsonFields &fields)
{
    WeatherSnapshot snapshot;
    snapshot.temperature = fields.number(QLatin1StringView("temperature_2m"), largestMeasure);
    snapshot.apparentTemperature = fields.number(QLatin1StringView("apparent_temperature"), largestMeasure);
    snapshot.humidity = fields.number(QLatin1StringView("relative_humidity_2m"), largestMeasure);
    snapshot.windSpeed = fields.number(QLatin1StringView("wind_speed_10m"), largestMeasure);
    snapshot.weatherCode = fields.integer(QLatin1StringView("weather_code"));
    snapshot.isDay = fields.integer(QLatin1StringView("is_day")) == 1;
    return snapshot;
}

ForecastResult readForecast(const QJsonObject &object, const WeatherLocation &place, const QDateTime &now)
{
    JsonFields fields(object);
    const QTimeZone zone =
        zoneNamed(fields.optionalText(QLatin1StringView("timezone")).value_or(QStringLiteral("GMT")));
    const auto currentObject = fields.optionalObject(QLatin1StringView("current"));
    JsonFields current(currentObject.value_or(QJsonObject()));
    JsonFields daily(fields.optionalObject(QLatin1StringView("daily")).value_or(QJsonObject()));
    const QList<DailyForecast> days = readDays(daily, zone);
    if (!fields.isReadable() || !daily.isReadable())
        return unreadable(fields.unreadableField() + daily.unreadableField());
    if (!currentObject)
        return WeatherFailure{errorDescription(WeatherError::missingCurrent)};
    WeatherSnapshot snapshot = readCurrent(current);
    if (!current.isReadable())
        return unreadable(current.unreadableField());
    snapshot.daily = days;
    snapshot.fetchedAt = now;
    snapshot.place = place;
    return snapshot;
}

std::optional<QString> nonEmpty(const std::optional<QString> &text)
{
    return text && !text->trimmed().isEmpty() ? text : std::nullopt;
}

/// Both services tell the same, under other names.
struct CallerPlace {
    std::optional<QString> city;
    std::optional<QString> region;
    std::optional<QString> country;
    std::optional<double> latitude;
    std::optional<double> longitude;
    std::optional<QString> timezone;
};

CallerPlace readCaller(JsonFields &fields, QLatin1StringView country)
{
    return {nonEmpty(fields.optionalText(QLatin1StringView("city"))),
        nonEmpty(fields.optionalText(QLatin1StringView("region"))), nonEmpty(fields.optionalText(country)),
        fields.optionalNumber(QLatin1StringView("latitude"), largestLatitude),
        fields.optionalNumber(QLatin1StringView("longitude"), largestLongitude), std::nullopt};
}

std::optional<WeatherLocation> locationOf(const CallerPlace &place)
{
    if (!place.latitude || !place.longitude)
        return std::nullopt;
    const QString name = place.city.value_or(place.region.value_or(LocationService::unnamedPlace()));
    return WeatherLocation{name, place.region, place.country, *place.latitude, *place.longitude, place.timezone};
}

WeatherLocation readCity(JsonFields &fields)
{
    WeatherLocation city;
    city.name = fields.text(QLatin1StringView("name"));
    city.admin1 = fields.optionalText(QLatin1StringView("admin1"));
    city.country = fields.optionalText(QLatin1StringView("country"));
    city.latitude = fields.number(QLatin1StringView("latitude"), largestLatitude);
    city.longitude = fields.number(QLatin1StringView("longitude"), largestLongitude);
    city.timezone = fields.optionalText(QLatin1StringView("timezone"));
    return city;
}

} // namespace

QString errorDescription(WeatherError error)
{
    switch (error) {
    case WeatherError::badResponse:
        return QCoreApplication::translate("WeatherReplies", "Weather service unavailable");
    case WeatherError::missingCurrent:
        return QCoreApplication::translate("WeatherReplies", "No current conditions returned");
    }
    Q_UNREACHABLE();
}

ForecastResult decodeForecast(const HttpAnswer &answer, const WeatherLocation &place, const QDateTime &now)
{
    if (answer.failure)
        return WeatherFailure{*answer.failure};
    if (answer.status != statusOK)
        return WeatherFailure{errorDescription(WeatherError::badResponse)};
    const auto object = jsonObject(answer);
    return object ? readForecast(*object, place, now) : unreadable(QStringLiteral("no JSON object"));
}

QList<WeatherLocation> decodeCities(const HttpAnswer &answer)
{
    JsonFields fields(jsonObject(answer).value_or(QJsonObject()));
    QList<WeatherLocation> cities;
    const QJsonArray results = fields.optionalList(QLatin1StringView("results")).value_or(QJsonArray());
    for (const auto &result : results) {
        JsonFields city(result.toObject());
        cities.append(readCity(city));
        if (!city.isReadable())
            return {};
    }
    return cities;
}

std::optional<WeatherLocation> decodeIPWho(const HttpAnswer &answer)
{
    JsonFields fields(jsonObject(answer).value_or(QJsonObject()));
    const bool success = fields.optionalFlag(QLatin1StringView("success")).value_or(true);
    JsonFields timezone(fields.optionalObject(QLatin1StringView("timezone")).value_or(QJsonObject()));
    CallerPlace place = readCaller(fields, QLatin1StringView("country"));
    place.timezone = timezone.optionalText(QLatin1StringView("id"));
    return success && fields.isReadable() && timezone.isReadable() ? locationOf(place) : std::nullopt;
}

std::optional<WeatherLocation> decodeIPAPI(const HttpAnswer &answer)
{
    JsonFields fields(jsonObject(answer).value_or(QJsonObject()));
    CallerPlace place = readCaller(fields, QLatin1StringView("country_name"));
    place.timezone = fields.optionalText(QLatin1StringView("timezone"));
    return fields.isReadable() ? locationOf(place) : std::nullopt;
}

} // namespace moorline
