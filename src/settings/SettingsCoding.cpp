#include "settings/SettingsCoding.h"

#include "settings/Choices.h"
#include "settings/SettingsFields.h"
#include "support/JsonFields.h"
#include "support/JsonMembers.h"

#include <QJsonDocument>

namespace moorline {

namespace {

/// How a value stands in the settings file. What cannot be read is absent.
template <typename Value>
struct Coding;

template <>
struct Coding<bool> {
    static std::optional<bool> read(const QJsonValue &json) { return json::flag(json); }
    static QJsonValue write(bool value) { return value; }
};

template <>
struct Coding<double> {
    static std::optional<double> read(const QJsonValue &json) { return json::number(json); }
    static QJsonValue write(double value) { return value; }
};

template <>
struct Coding<qint64> {
    static std::optional<qint64> read(const QJsonValue &json) { return json::integer(json, ownLimits); }
    static QJsonValue write(qint64 value) { return value; }
};

template <>
struct Coding<QString> {
    static std::optional<QString> read(const QJsonValue &json) { return json::text(json, ownLimits); }
    static QJsonValue write(const QString &value) { return value; }
};

template <HasChoices Enum>
struct Coding<Enum> {
    static std::optional<Enum> read(const QJsonValue &json)
    {
        const auto raw = json::text(json, ownLimits);
        return raw ? fromRawValue<Enum>(*raw) : std::nullopt;
    }
    static QJsonValue write(Enum value) { return rawValue(value); }
};

template <typename Value>
struct Coding<QList<Value>> {
    static std::optional<QList<Value>> read(const QJsonValue &json)
    {
        return json::listOf<Value>(json, ownLimits, Coding<Value>::read);
    }
    static QJsonValue write(const QList<Value> &values)
    {
        QJsonArray array;
        for (const Value &value : values)
            array.append(Coding<Value>::write(value));
        return array;
    }
};

JsonFields fieldsOf(const QJsonValue &json)
{
    return JsonFields(json.toObject(), ownLimits);
}

template <typename Value>
std::optional<Value> ifReadable(const JsonFields &fields, Value value)
{
    return fields.isReadable() ? std::optional(std::move(value)) : std::nullopt;
}

void insert(QJsonObject &object, QLatin1StringView key, const std::optional<QString> &value)
{
    if (value)
        object.insert(key, *value);
}

template <>
struct Coding<PinnedItem> {
    static std::optional<PinnedItem> read(const QJsonValue &json)
    {
        JsonFields fields = fieldsOf(json);
        PinnedItem item{fields.text(QLatin1StringView("path")), fields.text(QLatin1StringView("name"))};
        return ifReadable(fields, std::move(item));
    }
    static QJsonValue write(const PinnedItem &value)
    {
        return QJsonObject{{QStringLiteral("path"), value.path}, {QStringLiteral("name"), value.name}};
    }
};

template <>
struct Coding<AppShortcut> {
    static std::optional<AppShortcut> read(const QJsonValue &json)
    {
        JsonFields fields = fieldsOf(json);
        AppShortcut shortcut{fields.text(QLatin1StringView("path")),
            fields.optionalText(QLatin1StringView("bundleIdentifier")), fields.text(QLatin1StringView("name"))};
        return ifReadable(fields, std::move(shortcut));
    }
    static QJsonValue write(const AppShortcut &value)
    {
        QJsonObject object{{QStringLiteral("path"), value.path}, {QStringLiteral("name"), value.name}};
        insert(object, QLatin1StringView("bundleIdentifier"), value.bundleIdentifier);
        return object;
    }
};

template <>
struct Coding<WeatherLocation> {
    static std::optional<WeatherLocation> read(const QJsonValue &json)
    {
        JsonFields fields = fieldsOf(json);
        WeatherLocation location{fields.text(QLatin1StringView("name")),
            fields.optionalText(QLatin1StringView("admin1")), fields.optionalText(QLatin1StringView("country")),
            fields.number(QLatin1StringView("latitude")), fields.number(QLatin1StringView("longitude")),
            fields.optionalText(QLatin1StringView("timezone"))};
        return ifReadable(fields, std::move(location));
    }
    static QJsonValue write(const WeatherLocation &value)
    {
        QJsonObject object{{QStringLiteral("name"), value.name}, {QStringLiteral("latitude"), value.latitude},
            {QStringLiteral("longitude"), value.longitude}};
        insert(object, QLatin1StringView("admin1"), value.admin1);
        insert(object, QLatin1StringView("country"), value.country);
        insert(object, QLatin1StringView("timezone"), value.timezone);
        return object;
    }
};

} // namespace

std::optional<Settings> decodeSettings(const QByteArray &json)
{
    const auto members = JsonMembers::of(json);
    if (!members)
        return std::nullopt;
    Settings settings = Settings::defaults();
    forEachSetting([&]<typename Value>(const char *key, Value Settings::*field) {
        if (auto value = Coding<Value>::read((*members)[QLatin1StringView(key)]))
            settings.*field = *std::move(value);
    });
    return settings;
}

QByteArray encodeSettings(const Settings &settings)
{
    QJsonObject object;
    forEachSetting([&]<typename Value>(const char *key, Value Settings::*field) {
        object.insert(QLatin1StringView(key), Coding<Value>::write(settings.*field));
    });
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

} // namespace moorline
