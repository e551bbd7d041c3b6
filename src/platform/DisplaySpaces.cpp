#include "platform/DisplaySpaces.h"

#include <QMetaType>
#include <algorithm>

namespace moorline {

namespace {

std::optional<QString> text(const QVariant &value)
{
    return value.typeId() == QMetaType::QString ? std::optional(value.toString()) : std::nullopt;
}

std::optional<qint64> integer(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return value.toLongLong();
    default:
        return std::nullopt;
    }
}

DisplaySpace displaySpaceFrom(const QVariant &display)
{
    const QVariantMap values = display.toMap();
    const QVariantMap space = values.value(QStringLiteral("Current Space")).toMap();
    return {
        .displayIdentifier = text(values.value(QStringLiteral("Display Identifier"))),
        .currentSpaceType = integer(space.value(QStringLiteral("type"))),
    };
}

} // namespace

QList<DisplaySpace> displaySpacesFrom(const QVariantList &displays)
{
    QList<DisplaySpace> spaces;
    std::transform(displays.begin(), displays.end(), std::back_inserter(spaces), displaySpaceFrom);
    return spaces;
}

} // namespace moorline
