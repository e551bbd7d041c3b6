#include "platform/linux/location/GeoClueFix.h"

#include <QDBusArgument>

namespace moorline {

namespace {

/// Absent for what is no number, and for one that is not within `limit` of zero.
std::optional<double> degrees(const QVariant &value, double limit)
{
    if (value.typeId() != QMetaType::Double)
        return {};
    const double number = value.toDouble();
    // Not a number fails both comparisons.
    return number >= -limit && number <= limit ? std::optional(number) : std::nullopt;
}

QDateTime timestamp(const QVariant &value, const QDateTime &now)
{
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return now;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1StringView("(tt)"))
        return now;
    quint64 seconds = 0;
    quint64 microseconds = 0;
    argument.beginStructure();
    argument >> seconds >> microseconds;
    argument.endStructure();
    if (seconds == 0 || microseconds >= 1'000'000 || seconds > quint64(std::max<qint64>(now.toSecsSinceEpoch(), 0)))
        return now;
    return std::min(QDateTime::fromMSecsSinceEpoch(qint64(seconds * 1000 + microseconds / 1000)), now);
}

} // namespace

std::optional<PositionFix> positionFix(const QVariantMap &location, const QDateTime &now)
{
    const auto latitude = degrees(location.value(QStringLiteral("Latitude")), 90);
    const auto longitude = degrees(location.value(QStringLiteral("Longitude")), 180);
    if (!latitude || !longitude)
        return {};
    return PositionFix{
        .latitude = *latitude,
        .longitude = *longitude,
        .timestamp = timestamp(location.value(QStringLiteral("Timestamp")), now),
    };
}

} // namespace moorline
