#include "GeoClueDouble.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QThread>

namespace moorline::test {

namespace {

const QString service = QStringLiteral("org.freedesktop.GeoClue2");
const QString root = QStringLiteral("/org/freedesktop/GeoClue2");
const QString clientPath = QStringLiteral("/org/freedesktop/GeoClue2/Client/1");
const QString clientInterface = QStringLiteral("org.freedesktop.GeoClue2.Client");

QDBusConnection connectionNamed(const QString &name)
{
    return QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
}

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const GeoClueTimestamp &timestamp)
{
    argument.beginStructure();
    argument << timestamp.seconds << timestamp.microseconds;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, GeoClueTimestamp &timestamp)
{
    argument.beginStructure();
    argument >> timestamp.seconds >> timestamp.microseconds;
    argument.endStructure();
    return argument;
}

GeoClueDouble::GeoClueDouble()
{
    qDBusRegisterMetaType<GeoClueTimestamp>();
    setLocation(48.14, 11.58, {});
}

GeoClueDouble::~GeoClueDouble()
{
    stop();
}

void GeoClueDouble::start()
{
    static int generation = 0;
    m_connectionName = QStringLiteral("geoclue%1").arg(++generation);
    auto connection = connectionNamed(m_connectionName);
    connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    if (!connection.registerService(service))
        qWarning("GeoClue did not get its name: %s", qPrintable(connection.lastError().message()));
}

void GeoClueDouble::stop()
{
    m_held.clear();
    m_isTracking = false;
    m_hasClient = false;
    if (m_connectionName.isEmpty())
        return;
    // Calls that were not delivered yet keep the connection open. They are refused by Qt, which needs it for that.
    connectionNamed(m_connectionName).unregisterObject(QStringLiteral("/"));
    QCoreApplication::removePostedEvents(this);
    QDBusConnection::disconnectFromBus(std::exchange(m_connectionName, {}));
    // The bus notices a little later, and gives the name to nobody else before.
    const QDeadlineTimer patience(std::chrono::seconds(5));
    while (QDBusConnection::systemBus().interface()->isServiceRegistered(service) && !patience.hasExpired())
        QThread::yieldCurrentThread();
}

void GeoClueDouble::fail(const QString &method, const QString &errorName)
{
    m_errors.insert(method, errorName);
}

void GeoClueDouble::answerWith(const QString &method, const QVariantList &answer)
{
    m_errors.remove(method);
    m_answers.insert(method, answer);
}

void GeoClueDouble::hold(const QString &method)
{
    m_held.insert(method, {});
}

void GeoClueDouble::release(const QString &method)
{
    const auto connection = connectionNamed(m_connectionName);
    for (const QDBusMessage &message : m_held.take(method))
        connection.send(message.createReply(usualAnswer(message)));
}

void GeoClueDouble::setLocation(double latitude, double longitude, GeoClueTimestamp timestamp)
{
    location = {
        {QStringLiteral("Latitude"), latitude},
        {QStringLiteral("Longitude"), longitude},
        {QStringLiteral("Accuracy"), 1000.0},
        {QStringLiteral("Description"), QString()},
        {QStringLiteral("Timestamp"), QVariant::fromValue(timestamp)},
    };
}

void GeoClueDouble::tellLocation(const QString &path)
{
    connectionNamed(m_connectionName).send(locationSignal(path));
}

void GeoClueDouble::tellProperty(const QString &name, const QVariant &value)
{
    auto signal = QDBusMessage::createSignal(root + QStringLiteral("/Manager"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
    signal << QStringLiteral("org.freedesktop.GeoClue2.Manager") << QVariantMap{{name, value}} << QStringList();
    connectionNamed(m_connectionName).send(signal);
}

void GeoClueDouble::tellLocationAsStranger()
{
    connectionNamed(QStringLiteral("stranger")).send(locationSignal(root + QStringLiteral("/Location/1")));
}

QDBusMessage GeoClueDouble::locationSignal(const QString &path) const
{
    auto signal = QDBusMessage::createSignal(clientPath, clientInterface, QStringLiteral("LocationUpdated"));
    return signal << QVariant::fromValue(QDBusObjectPath(QStringLiteral("/")))
                  << QVariant::fromValue(QDBusObjectPath(path));
}

bool GeoClueDouble::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    record(message);
    const QString method = message.member();
    if (const auto held = m_held.find(method); held != m_held.end()) {
        message.setDelayedReply(true);
        held->append(message);
        return true;
    }
    if (m_errors.contains(method))
        return connection.send(message.createErrorReply(m_errors.value(method), QStringLiteral("as told")));
    const auto answer = usualAnswer(message);
    return connection.send(message.createReply(m_answers.value(method, answer)));
}

void GeoClueDouble::record(const QDBusMessage &message)
{
    const auto arguments = message.arguments();
    if (message.member() == QLatin1StringView("Set"))
        m_calls.append(QStringLiteral("Set ") + arguments.value(1).toString());
    else
        m_calls.append(message.member());
}

QVariantList GeoClueDouble::usualAnswer(const QDBusMessage &message)
{
    const QString method = message.member();
    const auto arguments = message.arguments();
    if (method == QLatin1StringView("GetClient")) {
        m_hasClient = true;
        return {QVariant::fromValue(QDBusObjectPath(clientPath))};
    }
    if (method == QLatin1StringView("Set"))
        m_clientProperties.insert(arguments.value(1).toString(), arguments.value(2).value<QDBusVariant>().variant());
    else if (method == QLatin1StringView("GetAll"))
        return {location};
    else if (method == QLatin1StringView("Start"))
        m_isTracking = m_hasClient;
    else if (method == QLatin1StringView("Stop"))
        m_isTracking = false;
    else if (method == QLatin1StringView("DeleteClient"))
        m_hasClient = arguments.value(0).value<QDBusObjectPath>().path() != clientPath;
    return {};
}

QString GeoClueDouble::introspect(const QString &) const
{
    return {};
}

} // namespace moorline::test
