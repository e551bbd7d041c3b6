#include "platform/linux/bus/PlainValues.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>

namespace moorline {

namespace {

// What holds more than these in each other says nothing that anybody asks for. D-Bus itself allows 64.
constexpr int deepest = 8;

QVariantMap plainMap(const QVariantMap &values, int depth);

QVariant plainValue(const QVariant &value, int depth)
{
    if (depth > deepest)
        return {};
    if (value.metaType() == QMetaType::fromType<QDBusVariant>())
        return plainValue(value.value<QDBusVariant>().variant(), depth + 1);
    if (value.metaType() == QMetaType::fromType<QDBusObjectPath>())
        return value.value<QDBusObjectPath>().path();
    if (value.metaType() == QMetaType::fromType<QDBusSignature>())
        return value.value<QDBusSignature>().signature();
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return value;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1StringView("a{sv}"))
        return {};
    return plainMap(qdbus_cast<QVariantMap>(argument), depth + 1);
}

QVariantMap plainMap(const QVariantMap &values, int depth)
{
    QVariantMap plain;
    for (auto value = values.begin(); value != values.end(); ++value) {
        const QVariant one = plainValue(*value, depth);
        if (one.isValid())
            plain.insert(value.key(), one);
    }
    return plain;
}

} // namespace

QVariantMap plainValues(const QVariantMap &values)
{
    return plainMap(values, 0);
}

} // namespace moorline
