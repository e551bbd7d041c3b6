#include "support/JsonValues.h"

#include <cmath>

namespace moorline::json {

std::optional<bool> flag(const QJsonValue &value)
{
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<double> number(const QJsonValue &value, double limit)
{
    const double number = value.toDouble(std::nan(""));
    // Also false for what is not a number.
    return std::abs(number) <= limit ? std::optional(number) : std::nullopt;
}

std::optional<qint64> integer(const QJsonValue &value, const JsonLimits &limits)
{
    constexpr qint64 probe = 1;
    const qint64 number = value.toInteger();
    // Two defaults tell a number that is no integer from one that equals the default.
    const bool isInteger = value.isDouble() && number == value.toInteger(probe);
    const bool isWithin = number >= limits.smallestInteger && number <= limits.largestInteger;
    return isInteger && isWithin ? std::optional(number) : std::nullopt;
}

std::optional<QString> text(const QJsonValue &value, const JsonLimits &limits)
{
    if (!value.isString())
        return std::nullopt;
    QString text = value.toString();
    return text.size() <= limits.longestText ? std::optional(std::move(text)) : std::nullopt;
}

std::optional<QJsonObject> object(const QJsonValue &value)
{
    return value.isObject() ? std::optional(value.toObject()) : std::nullopt;
}

std::optional<QJsonArray> list(const QJsonValue &value, const JsonLimits &limits)
{
    if (!value.isArray())
        return std::nullopt;
    QJsonArray list = value.toArray();
    return list.size() <= limits.longestList ? std::optional(std::move(list)) : std::nullopt;
}

} // namespace moorline::json
