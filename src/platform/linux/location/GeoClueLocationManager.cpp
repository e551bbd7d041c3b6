#include "platform/linux/location/GeoClueLocationManager.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QPointer>
#include <utility>

namespace moorline {

namespace {

const QString managerInterface = QStringLiteral("org.freedesktop.GeoClue2.Manager");

/// The level that a signal of changed properties tells; none for one that tells of something else.
uint levelOf(const QDBusMessage &message)
{
    if (message.signature() != QLatin1StringView("sa{sv}as") || message.arguments().at(0) != managerInterface)
        return 0;
    const auto level =
        qdbus_cast<QVariantMap>(message.arguments().at(1)).value(QStringLiteral("AvailableAccuracyLevel"));
    return level.typeId() == QMetaType::UInt ? level.toUInt() : 0;
}

} // namespace

GeoClueLocationManager::GeoClueLocationManager(Bus &systemBus, Clock &clock, const QString &desktopId)
    : m_bus(systemBus)
    , m_clock(clock)
    , m_desktopId(desktopId)
    , m_geoClue(systemBus, clock, QStringLiteral("org.freedesktop.GeoClue2"))
    , m_properties(m_geoClue,
          {.path = QStringLiteral("/org/freedesktop/GeoClue2/Manager"),
              .interface = QStringLiteral("org.freedesktop.DBus.Properties"),
              .member = QStringLiteral("PropertiesChanged")},
          [this](const QDBusMessage &message) { noteProperties(message); })
{
    connect(&systemBus, &Bus::stateChanged, this, &GeoClueLocationManager::noteBus);
    connect(
        &m_geoClue, &FollowedName::ownerChanged, this, [this](const QString &, const QString &now) { noteOwner(now); });
}

GeoClueLocationManager::~GeoClueLocationManager() = default;

bool GeoClueLocationManager::locationServicesEnabled() const
{
    return meaningOf(m_condition).servicesEnabled;
}

LocationAuthorization GeoClueLocationManager::authorizationStatus() const
{
    return meaningOf(m_condition).authorization;
}

void GeoClueLocationManager::noteBus()
{
    if (m_isPermissionWanted || m_isLocationWanted)
        ensureSession();
    else if (!m_bus.isOpen())
        setCondition(GeoClueCondition::absent);
    else if (m_condition == GeoClueCondition::absent)
        setCondition(GeoClueCondition::notAsked);
}

void GeoClueLocationManager::requestWhenInUseAuthorization()
{
    m_isPermissionWanted = true;
    ensureSession();
}

void GeoClueLocationManager::requestLocation()
{
    m_isLocationWanted = true;
    ensureSession();
}

void GeoClueLocationManager::ensureSession()
{
    if (m_bus.state() == Bus::State::awaited || m_session)
        return;
    m_isPermissionWanted = false;
    m_session = std::make_unique<GeoClueSession>(
        m_geoClue, m_clock, GeoClueSession::Introduction{m_desktopId, geoClueLevel(m_accuracy)});
    connect(m_session.get(), &GeoClueSession::granted, this, [this] { decided(GeoClueCondition::granted); });
    connect(m_session.get(), &GeoClueSession::refused, this, &GeoClueLocationManager::refused);
    connect(m_session.get(), &GeoClueSession::finished, this, &GeoClueLocationManager::finished);
    m_session->begin();
}

void GeoClueLocationManager::endSession()
{
    // It is the one that calls.
    m_session.release()->deleteLater();
}

void GeoClueLocationManager::refused(GeoClueCondition why)
{
    endSession();
    const bool isLocationWanted = std::exchange(m_isLocationWanted, false);
    const QPointer<GeoClueLocationManager> alive(this);
    decided(why);
    if (alive && isLocationWanted)
        Q_EMIT didFail();
}

void GeoClueLocationManager::decided(GeoClueCondition condition)
{
    const QPointer<GeoClueLocationManager> alive(this);
    setCondition(condition);
    if (alive && (condition == GeoClueCondition::granted || condition == GeoClueCondition::refused))
        Q_EMIT didAnswerRequest();
}

void GeoClueLocationManager::finished(const std::optional<PositionFix> &fix)
{
    endSession();
    if (fix)
        m_location = fix;
    if (!std::exchange(m_isLocationWanted, false))
        return;
    if (fix)
        Q_EMIT didUpdateLocations({*fix});
    else
        Q_EMIT didFail();
}

void GeoClueLocationManager::noteOwner(const QString &now)
{
    if (!now.isEmpty())
        forgetRefusal();
}

void GeoClueLocationManager::noteProperties(const QDBusMessage &message)
{
    if (levelOf(message) > 0)
        forgetRefusal();
}

void GeoClueLocationManager::forgetRefusal()
{
    // With a session under way this came of that session, whose answer will tell more.
    if (!m_session && m_condition != GeoClueCondition::granted)
        setCondition(GeoClueCondition::notAsked);
}

void GeoClueLocationManager::setCondition(GeoClueCondition condition)
{
    const bool isNews = meaningOf(condition) != meaningOf(m_condition);
    m_condition = condition;
    if (isNews)
        Q_EMIT didChangeAuthorization();
}

} // namespace moorline
