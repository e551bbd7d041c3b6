#include "freedesktop/LauncherEntryState.h"

#include "freedesktop/BusNumber.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace moorline {

namespace {

constexpr qsizetype longestQuicklist = 256;

// Twice this is the first number beyond those of 64 bits with a sign, and both are exact.
constexpr double halfOfAllCounts = 4611686018427387904.0;

std::optional<qint64> wholeNumber(const QVariant &value)
{
    constexpr qint64 largest = std::numeric_limits<qint64>::max();
    if (!isBusNumber(value))
        return std::nullopt;
    if (value.typeId() == QMetaType::ULongLong)
        return static_cast<qint64>(std::min(value.toULongLong(), static_cast<quint64>(largest)));
    if (value.typeId() != QMetaType::Double)
        return value.toLongLong();
    const double number = value.toDouble();
    if (std::isnan(number))
        return std::nullopt;
    if (std::abs(number) / 2 >= halfOfAllCounts)
        return number > 0 ? largest : -largest;
    return static_cast<qint64>(number);
}

std::optional<double> fraction(const QVariant &value)
{
    if (value.typeId() != QMetaType::Double) {
        const auto whole = wholeNumber(value);
        return whole ? std::optional(static_cast<double>(std::clamp<qint64>(*whole, 0, 1))) : std::nullopt;
    }
    const double number = value.toDouble();
    return std::isnan(number) ? std::nullopt : std::optional(std::clamp(number, 0.0, 1.0));
}

std::optional<bool> truth(const QVariant &value)
{
    return value.typeId() == QMetaType::Bool ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<QString> shortText(const QVariant &value)
{
    const bool isOne = value.typeId() == QMetaType::QString && value.toString().size() <= longestQuicklist;
    return isOne ? std::optional(value.toString()) : std::nullopt;
}

template <typename T>
void take(T &member, const std::optional<T> &value)
{
    if (value)
        member = *value;
}

} // namespace

void LauncherEntryState::merge(const QVariantMap &changes)
{
    take(count, wholeNumber(changes.value(QStringLiteral("count"))));
    take(isCountVisible, truth(changes.value(QStringLiteral("count-visible"))));
    take(progress, fraction(changes.value(QStringLiteral("progress"))));
    take(isProgressVisible, truth(changes.value(QStringLiteral("progress-visible"))));
    take(isUrgent, truth(changes.value(QStringLiteral("urgent"))));
    take(isUpdating, truth(changes.value(QStringLiteral("updating"))));
    take(quicklist, shortText(changes.value(QStringLiteral("quicklist"))));
}

std::optional<QString> LauncherEntryState::badge() const
{
    return isCountVisible && count >= 1 ? std::optional(QString::number(count)) : std::nullopt;
}

} // namespace moorline
