#include "platform/linux/location/GeoClueSession.h"
#include "platform/linux/location/GeoClueFix.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QLoggingCategory>
#include <limits>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logLocation, "moorline.location", QtInfoMsg)

using namespace std::chrono_literals;

constexpr auto answerLimit = 10s;
/// An agent may ask the user meanwhile.
constexpr auto permissionLimit = 2min;
constexpr auto positionLimit = 30s;
/// The bus sets none: these limits are the clock's.
constexpr int unlimited = std::numeric_limits<int>::max();

/// GClueAccuracyLevel: names and weather want no more than the city.
constexpr uint cityAccuracy = 4;

const QString service = QStringLiteral("org.freedesktop.GeoClue2");
const QString managerPath = QStringLiteral("/org/freedesktop/GeoClue2/Manager");
const QString managerInterface = QStringLiteral("org.freedesktop.GeoClue2.Manager");
const QString clientInterface = QStringLiteral("org.freedesktop.GeoClue2.Client");
const QString locationInterface = QStringLiteral("org.freedesktop.GeoClue2.Location");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString noPath = QStringLiteral("/");

} // namespace

GeoClueSession::GeoClueSession(const QDBusConnection &bus, Clock &clock, const QString &desktopId)
    : m_bus(bus)
    , m_clock(clock)
    , m_desktopId(desktopId)
{
}

GeoClueSession::~GeoClueSession()
{
    letGo();
}

void GeoClueSession::begin()
{
    if (!m_bus.isConnected()) {
        // Nobody expects the answer within the question.
        QMetaObject::invokeMethod(
            this, [this] { refuse(GeoClueCondition::absent); }, Qt::QueuedConnection);
        return;
    }
    limit(answerLimit);
    ask(QDBusMessage::createMethodCall(service, managerPath, managerInterface, QStringLiteral("GetClient")),
        &GeoClueSession::adoptClient);
}

void GeoClueSession::ownerLeft(const QString &uniqueName)
{
    if (m_step == GeoClueStep::over || (!m_service.isEmpty() && m_service != uniqueName))
        return;
    m_client.clear();
    finish({});
}

void GeoClueSession::ask(const QDBusMessage &message, Continuation then)
{
    auto *call = new QDBusPendingCallWatcher(m_bus.asyncCall(message, unlimited), this);
    m_call = call;
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, then] {
        call->deleteLater();
        if (call == m_call)
            answered(call->reply(), then);
    });
}

void GeoClueSession::answered(const QDBusMessage &reply, Continuation then)
{
    m_call = nullptr;
    if (reply.type() == QDBusMessage::ReplyMessage) {
        (this->*then)(reply);
        return;
    }
    qCDebug(logLocation) << "GeoClue answers" << reply.errorName() << reply.errorMessage();
    // What comes of an unreadable position is another position, or none in time.
    if (m_step != GeoClueStep::waiting)
        refuse(conditionOf(reply.errorName(), m_step));
}

void GeoClueSession::limit(std::chrono::milliseconds duration)
{
    m_limit = m_clock.after(duration, [this] { timedOut(); });
}

void GeoClueSession::timedOut()
{
    qCDebug(logLocation) << "GeoClue does not answer in time";
    if (m_step == GeoClueStep::waiting)
        finish({});
    else
        refuse(GeoClueCondition::silent);
}

void GeoClueSession::adoptClient(const QDBusMessage &reply)
{
    const auto client = reply.arguments().value(0).value<QDBusObjectPath>().path();
    if (client.isEmpty() || client == noPath) {
        refuse(GeoClueCondition::broken);
        return;
    }
    m_service = reply.service();
    m_client = client;
    m_step = GeoClueStep::settingUp;
    m_bus.connect(m_service, m_client, clientInterface, QStringLiteral("LocationUpdated"), this,
        SLOT(locationUpdated(QDBusObjectPath, QDBusObjectPath)));
    limit(answerLimit);
    ask(clientProperty(QStringLiteral("DesktopId"), m_desktopId), &GeoClueSession::describeAccuracy);
}

void GeoClueSession::describeAccuracy(const QDBusMessage &)
{
    limit(answerLimit);
    ask(clientProperty(QStringLiteral("RequestedAccuracyLevel"), cityAccuracy), &GeoClueSession::startClient);
}

void GeoClueSession::startClient(const QDBusMessage &)
{
    m_step = GeoClueStep::starting;
    limit(permissionLimit);
    ask(clientCall(QStringLiteral("Start")), &GeoClueSession::clientStarted);
}

void GeoClueSession::clientStarted(const QDBusMessage &)
{
    m_step = GeoClueStep::waiting;
    limit(positionLimit);
    if (!m_location.isEmpty())
        readLocation();
    Q_EMIT granted();
}

void GeoClueSession::locationUpdated(const QDBusObjectPath &, const QDBusObjectPath &now)
{
    if (now.path() == noPath)
        return;
    m_location = now.path();
    if (m_step == GeoClueStep::waiting)
        readLocation();
}

void GeoClueSession::readLocation()
{
    auto question =
        QDBusMessage::createMethodCall(m_service, m_location, propertiesInterface, QStringLiteral("GetAll"));
    question << locationInterface;
    ask(question, &GeoClueSession::locationRead);
}

void GeoClueSession::locationRead(const QDBusMessage &reply)
{
    if (reply.signature() != QLatin1StringView("a{sv}"))
        return;
    const auto properties = qdbus_cast<QVariantMap>(reply.arguments().constFirst());
    if (const auto fix = positionFix(properties, m_clock.now()))
        finish(fix);
    else
        qCDebug(logLocation) << "GeoClue tells of no position on earth";
}

void GeoClueSession::refuse(GeoClueCondition why)
{
    close();
    Q_EMIT refused(why);
}

void GeoClueSession::finish(const std::optional<PositionFix> &fix)
{
    close();
    Q_EMIT finished(fix);
}

void GeoClueSession::close()
{
    m_step = GeoClueStep::over;
    m_call = nullptr;
    m_limit.reset();
    letGo();
}

void GeoClueSession::letGo()
{
    if (m_client.isEmpty())
        return;
    m_bus.send(clientCall(QStringLiteral("Stop")));
    // While it has clients, GeoClue does not end by itself.
    auto deletion =
        QDBusMessage::createMethodCall(m_service, managerPath, managerInterface, QStringLiteral("DeleteClient"));
    deletion << QVariant::fromValue(QDBusObjectPath(m_client));
    m_bus.send(deletion);
    m_client.clear();
}

QDBusMessage GeoClueSession::clientCall(const QString &method) const
{
    return QDBusMessage::createMethodCall(m_service, m_client, clientInterface, method);
}

QDBusMessage GeoClueSession::clientProperty(const QString &name, const QVariant &value) const
{
    auto setting = QDBusMessage::createMethodCall(m_service, m_client, propertiesInterface, QStringLiteral("Set"));
    setting << clientInterface << name << QVariant::fromValue(QDBusVariant(value));
    return setting;
}

} // namespace moorline
