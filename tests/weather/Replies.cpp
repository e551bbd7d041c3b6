#include "Replies.h"

#include <QJsonDocument>

namespace moorline::test::replies {

namespace {

QJsonObject parsed(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

void set(QJsonObject &object, const QString &field, const QJsonValue &value)
{
    if (value.isUndefined())
        object.remove(field);
    else
        object[field] = value;
}

} // namespace

QJsonArray texts(std::initializer_list<const char *> texts)
{
    QJsonArray list;
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

QByteArray bytes(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject forecast()
{
    return parsed(R"({
        "latitude": 37.763283, "longitude": -122.41286, "generationtime_ms": 0.0618,
        "utc_offset_seconds": -28800, "timezone": "America/Los_Angeles", "timezone_abbreviation": "GMT-8",
        "elevation": 18.0,
        "current_units": {"time": "iso8601", "interval": "seconds", "temperature_2m": "°F",
            "relative_humidity_2m": "%", "apparent_temperature": "°F", "is_day": "", "weather_code": "wmo code",
            "wind_speed_10m": "mp/h"},
        "current": {"time": "2025-03-04T13:00", "interval": 900, "temperature_2m": 60.4,
            "relative_humidity_2m": 71, "apparent_temperature": 58.6, "is_day": 1, "weather_code": 2,
            "wind_speed_10m": 9.2},
        "daily_units": {"time": "iso8601", "weather_code": "wmo code", "temperature_2m_max": "°F",
            "temperature_2m_min": "°F"},
        "daily": {"time": ["2025-03-04", "2025-03-05", "2025-03-06", "2025-03-07"],
            "weather_code": [2, 63, 3, 0], "temperature_2m_max": [62.5, 57.4, 58.0, 61.1],
            "temperature_2m_min": [48.5, 47.2, 44.9, 45.0]}
    })");
}

QJsonObject forecastWith(const QString &object, const QString &field, const QJsonValue &value)
{
    QJsonObject inner = forecast()[object].toObject();
    set(inner, field, value);
    return forecastWith(object, inner);
}

QJsonObject forecastWith(const QString &field, const QJsonValue &value)
{
    QJsonObject changed = forecast();
    set(changed, field, value);
    return changed;
}

QJsonObject ipWho()
{
    return parsed(R"({
        "ip": "203.0.113.7", "success": true, "type": "IPv4", "continent": "Europe", "continent_code": "EU",
        "country": "Germany", "country_code": "DE", "region": "Bavaria", "region_code": "BY", "city": "Munich",
        "latitude": 48.1351253, "longitude": 11.5819806, "is_eu": true, "postal": "80331", "calling_code": "49",
        "capital": "Berlin", "connection": {"asn": 64496, "org": "Example", "isp": "Example"},
        "timezone": {"id": "Europe/Berlin", "abbr": "CET", "is_dst": false, "offset": 3600, "utc": "+01:00"}
    })");
}

QJsonObject ipAPI()
{
    return parsed(R"({
        "ip": "203.0.113.9", "version": "IPv4", "city": "Oslo", "region": "Oslo County", "region_code": "03",
        "country": "NO", "country_name": "Norway", "country_code": "NO", "in_eu": false, "postal": "0151",
        "latitude": 59.9127, "longitude": 10.7461, "timezone": "Europe/Oslo", "utc_offset": "+0100",
        "country_population": 5314336, "asn": "AS64496", "org": "Example"
    })");
}

QJsonObject cities()
{
    return parsed(R"({
        "results": [
            {"id": 2950159, "name": "Berlin", "latitude": 52.52437, "longitude": 13.41053, "elevation": 74.0,
                "feature_code": "PPLC", "country_code": "DE", "admin1_id": 2950157, "timezone": "Europe/Berlin",
                "population": 3426354, "country_id": 2921044, "country": "Germany", "admin1": "State of Berlin"},
            {"id": 5245497, "name": "Berlin", "latitude": 43.96804, "longitude": -88.94345}
        ],
        "generationtime_ms": 0.79
    })");
}

} // namespace moorline::test::replies
