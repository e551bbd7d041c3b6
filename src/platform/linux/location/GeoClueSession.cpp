#include "platform/linux/location/GeoClueSession.h"

#include "platform/linux/bus/PendingBusCall.h"
#include "platform/linux/location/GeoClueFix.h"

#include <QDBusObjectPath>
#include <QLoggingCategory>
#include <QPointer>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logLocation, "moorline.location", QtInfoMsg)

using namespace std::chrono_literals;

constexpr auto answerLimit = 10s;
/// An agent may ask the user meanwhile.
constexpr auto permissionLimit = 2min;
constexpr auto positionLimit = 30s;

const QString managerPath = QStringLiteral("/org/freedesktop/GeoClue2/Manager");
const QString managerInterface = QStringLiteral("org.freedesktop.GeoClue2.Manager");
const QString clientInterface = QStringLiteral("org.freedesktop.GeoClue2.Client");
const QString locationInterface = QStringLiteral("org.freedesktop.GeoClue2.Location");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString noPath = QStringLiteral("/");

/// Where the machine is now; absent for a signal that does not tell.
std::optional<QString> newLocation(const QDBusMessage &message)
{
    if (message.signature() != QLatin1StringView("oo"))
        return std::nullopt;
    const QString path = message.arguments().at(1).value<QDBusObjectPath>().path();
    return path == noPath ? std::nullopt : std::optional(path);
}

} // namespace

GeoClueSession::GeoClueSession(FollowedName &geoClue, Clock &clock, Introduction introduction)
    : m_geoClue(geoClue)
    , m_clock(clock)
    , m_introduction(std::move(introduction))
{
    connect(&geoClue, &FollowedName::ownerChanged, this, &GeoClueSession::noteOwner);
}

GeoClueSession::~GeoClueSession()
{
    m_step = GeoClueStep::over;
    letGo();
}

void GeoClueSession::begin()
{
    if (m_geoClue.bus().isOpen()) {
        askForPermission();
        return;
    }
    // Nobody expects the answer within the question.
    QMetaObject::invokeMethod(
        this, [this] { refuse(GeoClueCondition::absent); }, Qt::QueuedConnection);
}

QCoro::Task<> GeoClueSession::askForPermission()
{
    const QPointer<GeoClueSession> alive(this);
    const auto tell = [this](const QDBusMessage &message, std::chrono::milliseconds limit) {
        return ask(*this, m_geoClue.bus(), m_clock, message, limit);
    };
    const BusAnswer client = co_await tell(
        QDBusMessage::createMethodCall(m_geoClue.name(), managerPath, managerInterface, QStringLiteral("GetClient")),
        answerLimit);
    if (!alive || !goesOn(client) || !adoptClient(client))
        co_return;
    const BusAnswer named =
        co_await tell(clientProperty(QStringLiteral("DesktopId"), m_introduction.desktopId), answerLimit);
    if (!alive || !goesOn(named))
        co_return;
    const BusAnswer described = co_await tell(
        clientProperty(QStringLiteral("RequestedAccuracyLevel"), m_introduction.accuracyLevel), answerLimit);
    if (!alive || !goesOn(described))
        co_return;
    m_step = GeoClueStep::starting;
    const BusAnswer started = co_await tell(clientCall(QStringLiteral("Start")), permissionLimit);
    if (alive && goesOn(started))
        waitForLocation();
}

bool GeoClueSession::goesOn(const BusAnswer &answer)
{
    if (m_step == GeoClueStep::over)
        return false;
    if (!answer.isError())
        return true;
    qCDebug(logLocation) << "GeoClue answers" << answer.errorName() << answer.errorText();
    refuse(conditionOf(answer.errorName(), m_step));
    return false;
}

bool GeoClueSession::adoptClient(const BusAnswer &answer)
{
    const QString client = answer.value<QDBusObjectPath>().value_or(QDBusObjectPath()).path();
    if (client.isEmpty() || client == noPath) {
        refuse(GeoClueCondition::broken);
        return false;
    }
    m_service = answer.sender();
    m_client = client;
    m_step = GeoClueStep::settingUp;
    const BusSignalAddress address{m_client, clientInterface, QStringLiteral("LocationUpdated")};
    m_locationUpdated = std::make_unique<BusSignal>(
        m_geoClue.bus(), m_service, address, [this](const QDBusMessage &message) { noteLocation(message); });
    return true;
}

void GeoClueSession::waitForLocation()
{
    m_step = GeoClueStep::waiting;
    m_limit = m_clock.after(positionLimit, [this] { finish({}); });
    if (!m_location.isEmpty())
        readLocation();
    Q_EMIT granted();
}

void GeoClueSession::noteOwner(const QString &before)
{
    const bool isOurs = !before.isEmpty() && (m_service.isEmpty() || m_service == before);
    if (m_step == GeoClueStep::over || !isOurs)
        return;
    m_client.clear();
    finish({});
}

void GeoClueSession::noteLocation(const QDBusMessage &message)
{
    const auto location = newLocation(message);
    if (!location)
        return;
    m_location = *location;
    if (m_step == GeoClueStep::waiting)
        readLocation();
}

QCoro::Task<> GeoClueSession::readLocation()
{
    const QPointer<GeoClueSession> alive(this);
    const QString location = m_location;
    auto question = QDBusMessage::createMethodCall(m_service, location, propertiesInterface, QStringLiteral("GetAll"));
    question << locationInterface;
    const BusAnswer answer = co_await ask(*this, m_geoClue.bus(), m_clock, question, positionLimit);
    // What comes of an unreadable position is another position, or none in time.
    if (!alive || m_step != GeoClueStep::waiting || location != m_location)
        co_return;
    const auto fix = positionFix(answer.value<QVariantMap>().value_or(QVariantMap()), m_clock.now());
    if (fix)
        finish(fix);
    else
        qCDebug(logLocation) << "GeoClue tells of no position on earth" << answer.errorName();
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
    m_limit.reset();
    m_locationUpdated.reset();
    letGo();
}

void GeoClueSession::letGo()
{
    if (m_client.isEmpty())
        return;
    const QDBusConnection &bus = m_geoClue.bus().connection();
    bus.send(clientCall(QStringLiteral("Stop")));
    // While it has clients, GeoClue does not end by itself.
    auto deletion =
        QDBusMessage::createMethodCall(m_service, managerPath, managerInterface, QStringLiteral("DeleteClient"));
    deletion << QVariant::fromValue(QDBusObjectPath(m_client));
    bus.send(deletion);
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
