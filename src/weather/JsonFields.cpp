#include "weather/JsonFields.h"

#include <cmath>

namespace moorline {

namespace {

/// Up to here every integer is a double of its own.
constexpr double largestInteger = 9007199254740992.0;

std::optional<double> readNumber(const QJsonValue &json, double limit)
{
    const double number = json.toDouble(std::nan(""));
    // Also false for what is not a number.
    return std::abs(number) <= limit ? std::optional(number) : std::nullopt;
}

std::optional<qint64> readInteger(const QJsonValue &json)
{
    const auto number = readNumber(json, largestInteger);
    return number && std::trunc(*number) == *number ? std::optional(qint64(*number)) : std::nullopt;
}

std::optional<QString> readText(const QJsonValue &json)
{
    const QString text = json.toString();
    return json.isString() && text.size() <= JsonFields::longestText ? std::optional(text) : std::nullopt;
}

std::optional<bool> readFlag(const QJsonValue &json)
{
    return json.isBool() ? std::optional(json.toBool()) : std::nullopt;
}

std::optional<QJsonObject> readObject(const QJsonValue &json)
{
    return json.isObject() ? std::optional(json.toObject()) : std::nullopt;
}

std::optional<QJsonArray> readList(const QJsonValue &json)
{
    const QJsonArray list = json.toArray();
    return json.isArray() && list.size() <= JsonFields::longestList ? std::optional(list) : std::nullopt;
}

} // namespace

JsonFields::JsonFields(QJsonObject object)
    : m_object(std::move(object))
{
}

void JsonFields::fail(const QString &name)
{
    if (m_isReadable)
        m_unreadableField = name;
    m_isReadable = false;
}

template <typename Value, typename Read>
std::optional<Value> JsonFields::optional(QLatin1StringView name, Read read)
{
    const QJsonValue json = m_object[name];
    if (json.isUndefined() || json.isNull())
        return std::nullopt;
    std::optional<Value> value = read(json);
    if (!value)
        fail(name);
    return value;
}

template <typename Value, typename Read>
Value JsonFields::required(QLatin1StringView name, Read read)
{
    const std::optional<Value> value = optional<Value>(name, read);
    if (!value)
        fail(name);
    return value.value_or(Value());
}

template <typename Value, typename Read>
std::optional<QList<Value>> JsonFields::optionalListOf(QLatin1StringView name, Read read)
{
    return optional<QList<Value>>(name, [read](const QJsonValue &json) -> std::optional<QList<Value>> {
        const auto list = readList(json);
        if (!list)
            return std::nullopt;
        QList<Value> values;
        for (const auto &element : *list) {
            const std::optional<Value> value = read(element);
            if (!value)
                return std::nullopt;
            values.append(*value);
        }
        return values;
    });
}

double JsonFields::number(QLatin1StringView name, double limit)
{
    return required<double>(name, [limit](const QJsonValue &json) { return readNumber(json, limit); });
}

std::optional<double> JsonFields::optionalNumber(QLatin1StringView name, double limit)
{
    return optional<double>(name, [limit](const QJsonValue &json) { return readNumber(json, limit); });
}

qint64 JsonFields::integer(QLatin1StringView name)
{
    return required<qint64>(name, readInteger);
}

QString JsonFields::text(QLatin1StringView name)
{
    return required<QString>(name, readText);
}

std::optional<QString> JsonFields::optionalText(QLatin1StringView name)
{
    return optional<QString>(name, readText);
}

std::optional<bool> JsonFields::optionalFlag(QLatin1StringView name)
{
    return optional<bool>(name, readFlag);
}

std::optional<QJsonObject> JsonFields::optionalObject(QLatin1StringView name)
{
    return optional<QJsonObject>(name, readObject);
}

std::optional<QJsonArray> JsonFields::optionalList(QLatin1StringView name)
{
    return optional<QJsonArray>(name, readList);
}

std::optional<QStringList> JsonFields::optionalTexts(QLatin1StringView name)
{
    return optionalListOf<QString>(name, readText);
}

std::optional<QList<qint64>> JsonFields::optionalIntegers(QLatin1StringView name)
{
    return optionalListOf<qint64>(name, readInteger);
}

std::optional<QList<double>> JsonFields::optionalNumbers(QLatin1StringView name, double limit)
{
    return optionalListOf<double>(name, [limit](const QJsonValue &json) { return readNumber(json, limit); });
}

} // namespace moorline
