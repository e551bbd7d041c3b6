#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <limits>
#include <optional>

namespace moorline {

/// How much of a JSON document is believed.
struct JsonLimits {
    /// Of a text, in UTF-16 units.
    qsizetype longestText;
    qsizetype longestList;
    qint64 smallestInteger;
    qint64 largestInteger;
};

/// For what a stranger sends: no name or list of theirs is longer, and their integers come through a double.
inline constexpr JsonLimits strangersLimits{256, 64, -(qint64(1) << 53), qint64(1) << 53};
/// For what this program or its user wrote: as much as the types hold.
inline constexpr JsonLimits ownLimits{std::numeric_limits<qsizetype>::max(), std::numeric_limits<qsizetype>::max(),
    std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()};

/// One JSON value as a value of its own. Absent when it is of another type, or beyond the limit; what is not there is
/// of another type as well.
namespace json {

/// Beyond it there is no finite number.
inline constexpr double anyNumber = std::numeric_limits<double>::max();

[[nodiscard]] std::optional<bool> flag(const QJsonValue &value);
/// Absent when the number is beyond `limit` in either direction, or none that is finite.
[[nodiscard]] std::optional<double> number(const QJsonValue &value, double limit = anyNumber);
/// In any notation, but without a fraction.
[[nodiscard]] std::optional<qint64> integer(const QJsonValue &value, const JsonLimits &limits);
[[nodiscard]] std::optional<QString> text(const QJsonValue &value, const JsonLimits &limits);
[[nodiscard]] std::optional<QJsonObject> object(const QJsonValue &value);
[[nodiscard]] std::optional<QJsonArray> list(const QJsonValue &value, const JsonLimits &limits);

/// Every element as `read` reads it; absent when one of them is.
template <typename Value, typename Read>
[[nodiscard]] std::optional<QList<Value>> listOf(const QJsonValue &value, const JsonLimits &limits, Read read)
{
    const std::optional<QJsonArray> elements = list(value, limits);
    if (!elements)
        return std::nullopt;
    QList<Value> values;
    for (const auto &element : *elements) {
        std::optional<Value> one = read(QJsonValue(element));
        if (!one)
            return std::nullopt;
        values.append(*std::move(one));
    }
    return values;
}

} // namespace json

} // namespace moorline
