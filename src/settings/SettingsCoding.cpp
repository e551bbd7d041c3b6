#include "settings/SettingsCoding.h"

#include "settings/Choices.h"
#include "settings/SettingsFields.h"
#include "support/JsonFields.h"
#include "support/JsonMembers.h"

#include <QJsonDocument>

namespace moorline {

namespace {

/// How a value stands in the settings file. What cannot be read is absent. What is written goes over what stood there
/// before.
template <typename Value>
struct Coding;

template <>
struct Coding<bool> {
    static std::optional<bool> read(const QJsonValue &json) { return json::flag(json); }
    static QJsonValue write(bool value, const QJsonValue &) { return value; }
};

template <>
struct Coding<double> {
    static std::optional<double> read(const QJsonValue &json) { return json::number(json); }
    static QJsonValue write(double value, const QJsonValue &) { return value; }
};

template <>
struct Coding<qint64> {
    static std::optional<qint64> read(const QJsonValue &json) { return json::integer(json, ownLimits); }
    static QJsonValue write(qint64 value, const QJsonValue &) { return value; }
};

template <>
struct Coding<QString> {
    static std::optional<QString> read(const QJsonValue &json) { return json::text(json, ownLimits); }
    static QJsonValue write(const QString &value, const QJsonValue &) { return value; }
};

template <HasChoices Enum>
struct Coding<Enum> {
    static std::optional<Enum> read(const QJsonValue &json)
    {
        const auto raw = json::text(json, ownLimits);
        return raw ? fromRawValue<Enum>(*raw) : std::nullopt;
    }
    static QJsonValue write(Enum value, const QJsonValue &) { return rawValue(value); }
};

/// The elements of a list as they stood in the file.
template <typename Value>
class Before final {
public:
    explicit Before(QJsonArray elements)
        : m_elements(std::move(elements))
    {
    }

    /// Undefined when the value was not there. The search goes on where the last one ended: of a long list, most is as
    /// it was.
    QJsonValue of(const Value &value)
    {
        for (qsizetype i = 0; i < m_elements.size(); ++i) {
            const qsizetype place = (m_next + i) % m_elements.size();
            QJsonValue element = m_elements.at(place);
            if (Coding<Value>::read(element) == value) {
                m_next = place + 1;
                return element;
            }
        }
        return QJsonValue::Undefined;
    }

private:
    QJsonArray m_elements;
    qsizetype m_next = 0;
};

template <typename Value>
struct Coding<QList<Value>> {
    static std::optional<QList<Value>> read(const QJsonValue &json)
    {
        return json::listOf<Value>(json, ownLimits, Coding<Value>::read);
    }
    static QJsonValue write(const QList<Value> &values, const QJsonValue &over)
    {
        Before<Value> before(over.toArray());
        QJsonArray array;
        for (const Value &value : values)
            array.append(Coding<Value>::write(value, before.of(value)));
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

/// What a record is written into: what stood there, if it is still the same record. A newer version may have more to
/// say of it.
template <typename Record>
QJsonObject objectFor(const Record &value, const QJsonValue &over)
{
    return Coding<Record>::read(over) == value ? over.toObject() : QJsonObject();
}

template <>
struct Coding<PinnedItem> {
    static std::optional<PinnedItem> read(const QJsonValue &json)
    {
        JsonFields fields = fieldsOf(json);
        PinnedItem item{fields.text(QLatin1StringView("path")), fields.text(QLatin1StringView("name"))};
        return ifReadable(fields, std::move(item));
    }
    static QJsonValue write(const PinnedItem &value, const QJsonValue &over)
    {
        QJsonObject object = objectFor(value, over);
        object.insert(QLatin1StringView("path"), value.path);
        object.insert(QLatin1StringView("name"), value.name);
        return object;
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
    static QJsonValue write(const AppShortcut &value, const QJsonValue &over)
    {
        QJsonObject object = objectFor(value, over);
        object.insert(QLatin1StringView("path"), value.path);
        object.insert(QLatin1StringView("name"), value.name);
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
    static QJsonValue write(const WeatherLocation &value, const QJsonValue &over)
    {
        QJsonObject object = objectFor(value, over);
        object.insert(QLatin1StringView("name"), value.name);
        object.insert(QLatin1StringView("latitude"), value.latitude);
        object.insert(QLatin1StringView("longitude"), value.longitude);
        insert(object, QLatin1StringView("admin1"), value.admin1);
        insert(object, QLatin1StringView("country"), value.country);
        insert(object, QLatin1StringView("timezone"), value.timezone);
        return object;
    }
};

} // namespace

std::optional<SettingsDocument> readSettings(const QByteArray &json)
{
    const auto members = JsonMembers::of(json);
    if (!members)
        return std::nullopt;
    SettingsDocument document{Settings::defaults(), members->readable(), members->isWhole()};
    forEachSetting([&]<typename Value>(const char *key, Value Settings::*field) {
        const QJsonValue member = document.members.value(QLatin1StringView(key));
        if (auto value = Coding<Value>::read(member))
            document.settings.*field = *std::move(value);
        else if (!member.isUndefined() && !member.isNull())
            document.isWhole = false;
    });
    return document;
}

std::optional<Settings> decodeSettings(const QByteArray &json)
{
    auto document = readSettings(json);
    return document ? std::optional(std::move(document->settings)) : std::nullopt;
}

QJsonObject writtenOver(QJsonObject members, const Settings &settings)
{
    forEachSetting([&]<typename Value>(const char *key, Value Settings::*field) {
        const QJsonValue over = members.value(QLatin1StringView(key));
        members.insert(QLatin1StringView(key), Coding<Value>::write(settings.*field, over));
    });
    return members;
}

QByteArray documentOf(const QJsonObject &members)
{
    return QJsonDocument(members).toJson(QJsonDocument::Indented);
}

QByteArray encodeSettings(const Settings &settings)
{
    return documentOf(writtenOver({}, settings));
}

} // namespace moorline
