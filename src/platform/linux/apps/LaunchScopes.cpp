#include "platform/linux/apps/LaunchScopes.h"

#include "freedesktop/LaunchRules.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/BusSignal.h"
#include "platform/linux/bus/PendingBusCall.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QPointer>
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

QList<UnitProperty> propertiesOf(const QString &description, qint64 process)
{
    const QList<uint> processes{static_cast<uint>(process)};
    return {property("PIDs", QVariant::fromValue(processes)), property("Description", description),
        property("Slice", QStringLiteral("app.slice")), property("CollectMode", QStringLiteral("inactive-or-failed"))};
}

const QString managerName = QStringLiteral("org.freedesktop.systemd1");
const QString managerPath = QStringLiteral("/org/freedesktop/systemd1");
const QString managerInterface = QStringLiteral("org.freedesktop.systemd1.Manager");

QDBusMessage startCall(const QString &scope, const QString &description, qint64 process)
{
    registerTypes();
    QDBusMessage call = QDBusMessage::createMethodCall(
        managerName, managerPath, managerInterface, QStringLiteral("StartTransientUnit"));
    call.setAutoStartService(false);
    call << scope << QStringLiteral("fail") << QVariant::fromValue(propertiesOf(description, process))
         << QVariant::fromValue(QList<AuxiliaryUnit>());
    return call;
}

/// Of a job that ended, as the manager tells whoever had it begun.
QString unitOf(const QDBusMessage &jobRemoved)
{
    return jobRemoved.signature() == QLatin1StringView("uoss") ? jobRemoved.arguments().at(2).toString() : QString();
}

} // namespace

LaunchScopes::LaunchScopes(Bus &bus, Clock &clock, std::chrono::milliseconds limit)
    : m_bus(bus)
    , m_clock(clock)
    , m_limit(limit)
{
}

LaunchScopes::~LaunchScopes() = default;

std::shared_ptr<const LaunchHold> LaunchScopes::hold(const QString &entryId, const QString &description)
{
    Hold hold = m_bus.isOpen() ? LaunchHold::create(m_limit) : nullptr;
    if (!hold)
        return nullptr;
    if (!m_ends) {
        m_ends = std::make_unique<BusSignal>(m_bus, QString(),
            BusSignalAddress{managerPath, managerInterface, QStringLiteral("JobRemoved")},
            [this](const QDBusMessage &message) { letGo(unitOf(message)); });
    }
    auto notifier = std::make_unique<QSocketNotifier>(hold->descriptor(), QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, [this, hold, entryId, description] {
        const QList<qint64> processes = hold->takeWaiting();
        for (const qint64 process : processes)
            keep(hold, process, entryId, description);
    });
    m_notifiers.emplace(hold.get(), std::move(notifier));
    return hold;
}

void LaunchScopes::release(const Hold &hold)
{
    m_notifiers.erase(hold.get());
    m_waiting.removeIf([&hold](const auto &waiting) { return waiting.value() == hold; });
    if (m_notifiers.empty())
        m_ends.reset();
}

QCoro::Task<> LaunchScopes::keep(Hold hold, qint64 process, QString entryId, QString description)
{
    const QPointer<LaunchScopes> alive(this);
    const QString scope = scopeName(entryId, QRandomGenerator::global()->generate());
    m_waiting.insert(scope, hold);
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, startCall(scope, description, process), m_limit);
    // Else the manager tells when it has been done.
    if (alive && answer.isError())
        letGo(scope);
}

void LaunchScopes::letGo(const QString &scope)
{
    if (const Hold hold = m_waiting.take(scope))
        hold->letGo();
}

} // namespace moorline
