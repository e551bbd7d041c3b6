#include "support/JsonFields.h"

namespace moorline {

JsonFields::JsonFields(QJsonObject object, const JsonLimits &limits)
    : m_object(std::move(object))
    , m_limits(limits)
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
    const QJsonValue field = m_object[name];
    if (field.isUndefined() || field.isNull())
        return std::nullopt;
    std::optional<Value> value = read(field);
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
    return optional<QList<Value>>(
        name, [this, read](const QJsonValue &value) { return json::listOf<Value>(value, m_limits, read); });
}

double JsonFields::number(QLatin1StringView name, double limit)
{
    return required<double>(name, [limit](const QJsonValue &value) { return json::number(value, limit); });
}

std::optional<double> JsonFields::optionalNumber(QLatin1StringView name, double limit)
{
    return optional<double>(name, [limit](const QJsonValue &value) { return json::number(value, limit); });
}

qint64 JsonFields::integer(QLatin1StringView name)
{
    return required<qint64>(name, [this](const QJsonValue &value) { return json::integer(value, m_limits); });
}

QString JsonFields::text(QLatin1StringView name)
{
    return required<QString>(name, [this](const QJsonValue &value) { return json::text(value, m_limits); });
}

std::optional<QString> JsonFields::optionalText(QLatin1StringView name)
{
    return optional<QString>(name, [this](const QJsonValue &value) { return json::text(value, m_limits); });
}

std::optional<bool> JsonFields::optionalFlag(QLatin1StringView name)
{
    return optional<bool>(name, json::flag);
}

std::optional<QJsonObject> JsonFields::optionalObject(QLatin1StringView name)
{
    return optional<QJsonObject>(name, json::object);
}

std::optional<QJsonArray> JsonFields::optionalList(QLatin1StringView name)
{
    return optional<QJsonArray>(name, [this](const QJsonValue &value) { return json::list(value, m_limits); });
}

std::optional<QStringList> JsonFields::optionalTexts(QLatin1StringView name)
{
    return optionalListOf<QString>(name, [this](const QJsonValue &value) { return json::text(value, m_limits); });
}

std::optional<QList<qint64>> JsonFields::optionalIntegers(QLatin1StringView name)
{
    return optionalListOf<qint64>(name, [this](const QJsonValue &value) { return json::integer(value, m_limits); });
}

std::optional<QList<double>> JsonFields::optionalNumbers(QLatin1StringView name, double limit)
{
    return optionalListOf<double>(name, [limit](const QJsonValue &value) { return json::number(value, limit); });
}

} // namespace moorline
