#include "platform/linux/bus/BusObject.h"

#include "platform/linux/bus/Bus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <algorithm>

namespace moorline {

namespace {

const QString introspectable = QStringLiteral("org.freedesktop.DBus.Introspectable");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

// The names are those of D-Bus's own errors: dbus.freedesktop.org/doc/api, "Protocol error names".
BusError error(const char *name, const QString &text)
{
    return {QStringLiteral("org.freedesktop.DBus.Error.") + QLatin1StringView(name), text};
}

BusError unknownInterface(const QString &name)
{
    return error("UnknownInterface", QStringLiteral("No interface %1").arg(name));
}

BusError unknownProperty(const QString &name)
{
    return error("UnknownProperty", QStringLiteral("No property %1").arg(name));
}

QString argumentXml(const QString &type, const char *direction)
{
    return QStringLiteral("      <arg type=\"%1\" direction=\"%2\"/>\n").arg(type, QLatin1StringView(direction));
}

QString methodXml(const BusMethod &method)
{
    QString xml = QStringLiteral("    <method name=\"%1\">\n").arg(method.name);
    for (const QString &type : method.takes)
        xml += argumentXml(type, "in");
    for (const QString &type : method.gives)
        xml += argumentXml(type, "out");
    return xml + QStringLiteral("    </method>\n");
}

QString interfaceXml(const BusInterface &interface)
{
    QString xml = QStringLiteral("  <interface name=\"%1\">\n").arg(interface.name);
    const QVariantMap properties = interface.properties();
    for (auto property = properties.begin(); property != properties.end(); ++property) {
        const QLatin1StringView type(QDBusMetaType::typeToSignature(property->metaType()));
        xml += QStringLiteral("    <property name=\"%1\" type=\"%2\" access=\"read\"/>\n").arg(property.key(), type);
    }
    for (const BusMethod &method : interface.methods)
        xml += methodXml(method);
    return xml + QStringLiteral("  </interface>\n");
}

} // namespace

BusError BusError::invalidArguments(const QString &text)
{
    return error("InvalidArgs", text);
}

BusObject::BusObject(Bus &bus, const QString &path, QList<BusInterface> interfaces)
    : m_bus(bus)
    , m_path(path)
    , m_interfaces(std::move(interfaces))
{
    connect(&bus, &Bus::stateChanged, this, &BusObject::enter);
    enter();
}

BusObject::~BusObject()
{
    if (m_bus.isOpen())
        QDBusConnection(m_bus.connection()).unregisterObject(m_path);
}

void BusObject::enter()
{
    if (m_bus.isOpen())
        QDBusConnection(m_bus.connection()).registerVirtualObject(m_path, this);
}

void BusObject::emitSignal(const QString &interface, const QString &member, const QVariantList &arguments) const
{
    if (!m_bus.isOpen())
        return;
    auto message = QDBusMessage::createSignal(m_path, interface, member);
    message.setArguments(arguments);
    m_bus.connection().send(message);
}

QString BusObject::introspect(const QString &) const
{
    QString xml;
    for (const BusInterface &interface : m_interfaces)
        xml += interfaceXml(interface);
    return xml;
}

bool BusObject::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    // Qt asks introspect() for that one.
    if (message.interface() == introspectable)
        return false;
    const BusMethod::Reply reply = answer(message);
    if (!message.isReplyRequired())
        return true;
    if (const auto *failure = std::get_if<BusError>(&reply))
        connection.send(message.createErrorReply(failure->name, failure->text));
    else
        connection.send(message.createReply(std::get<QVariantList>(reply)));
    return true;
}

const BusInterface *BusObject::find(const QString &interface) const
{
    const auto found = std::find_if(m_interfaces.begin(), m_interfaces.end(),
        [&interface](const BusInterface &candidate) { return candidate.name == interface; });
    return found == m_interfaces.end() ? nullptr : &*found;
}

/// The name of the interface may be left out of a call.
const BusMethod *BusObject::find(const QString &interface, const QString &method) const
{
    for (const BusInterface &candidate : m_interfaces) {
        if (!interface.isEmpty() && candidate.name != interface)
            continue;
        const auto found = std::find_if(candidate.methods.begin(), candidate.methods.end(),
            [&method](const BusMethod &one) { return one.name == method; });
        if (found != candidate.methods.end())
            return &*found;
    }
    return nullptr;
}

BusMethod::Reply BusObject::answer(const QDBusMessage &message) const
{
    const QVariantList arguments = message.arguments();
    if (message.interface() == propertiesInterface) {
        if (message.member() == QLatin1StringView("Get") && message.signature() == QLatin1StringView("ss"))
            return property(arguments.first().toString(), arguments.last().toString());
        if (message.member() == QLatin1StringView("GetAll") && message.signature() == QLatin1StringView("s"))
            return properties(arguments.first().toString());
        if (message.member() == QLatin1StringView("Set") && message.signature() == QLatin1StringView("ssv"))
            return error("PropertyReadOnly", QStringLiteral("Nothing can be set here"));
    }
    const BusMethod *method = find(message.interface(), message.member());
    if (!method)
        return error("UnknownMethod", QStringLiteral("No method %1 takes this").arg(message.member()));
    if (message.signature() != method->takes.join(QString()))
        return BusError::invalidArguments(
            QStringLiteral("%1 takes \"%2\"").arg(method->name, method->takes.join(QString())));
    return method->call(arguments);
}

BusMethod::Reply BusObject::property(const QString &interface, const QString &name) const
{
    const BusInterface *found = find(interface);
    if (!found)
        return unknownInterface(interface);
    const QVariantMap all = found->properties();
    if (!all.contains(name))
        return unknownProperty(name);
    return QVariantList{QVariant::fromValue(QDBusVariant(all.value(name)))};
}

BusMethod::Reply BusObject::properties(const QString &interface) const
{
    const BusInterface *found = find(interface);
    if (!found)
        return unknownInterface(interface);
    return QVariantList{found->properties()};
}

} // namespace moorline
