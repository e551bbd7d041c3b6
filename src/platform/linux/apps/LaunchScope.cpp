#include "platform/linux/apps/LaunchScope.h"

#include "freedesktop/LaunchRules.h"
#include "platform/linux/bus/Bus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QRandomGenerator>

namespace moorline {

namespace {

struct UnitProperty {
    QString name;
    QDBusVariant value;
};

struct AuxiliaryUnit {
    QString name;
    QList<UnitProperty> properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const UnitProperty &property)
{
    argument.beginStructure();
    argument << property.name << property.value;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, UnitProperty &property)
{
    argument.beginStructure();
    argument >> property.name >> property.value;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const AuxiliaryUnit &unit)
{
    argument.beginStructure();
    argument << unit.name << unit.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, AuxiliaryUnit &unit)
{
    argument.beginStructure();
    argument >> unit.name >> unit.properties;
    argument.endStructure();
    return argument;
}

void registerTypes()
{
    qDBusRegisterMetaType<UnitProperty>();
    qDBusRegisterMetaType<QList<UnitProperty>>();
    qDBusRegisterMetaType<AuxiliaryUnit>();
    qDBusRegisterMetaType<QList<AuxiliaryUnit>>();
}

UnitProperty property(const char *name, const QVariant &value)
{
    return {QString::fromLatin1(name), QDBusVariant(value)};
}

QList<UnitProperty> propertiesOf(const QString &description, const QList<qint64> &processes)
{
    QList<uint> ids;
    for (const qint64 process : processes)
        ids.append(static_cast<uint>(process));
    return {property("PIDs", QVariant::fromValue(ids)), property("Description", description),
        property("Slice", QStringLiteral("app.slice")), property("CollectMode", QStringLiteral("inactive-or-failed"))};
}

} // namespace

void moveToOwnScope(const Bus &bus, const QString &entryId, const QString &description, const QList<qint64> &processes)
{
    if (!bus.isOpen() || processes.isEmpty())
        return;
    registerTypes();
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.systemd1"),
        QStringLiteral("/org/freedesktop/systemd1"), QStringLiteral("org.freedesktop.systemd1.Manager"),
        QStringLiteral("StartTransientUnit"));
    call.setAutoStartService(false);
    call << scopeName(entryId, QRandomGenerator::global()->generate()) << QStringLiteral("fail")
         << QVariant::fromValue(propertiesOf(description, processes)) << QVariant::fromValue(QList<AuxiliaryUnit>());
    static_cast<void>(bus.connection().send(call));
}

} // namespace moorline
