#include "platform/linux/location/GeoClueLocationManager.h"

#include "platform/linux/bus/SystemBus.h"

#include <QPointer>
#include <utility>

namespace moorline {

GeoClueLocationManager::GeoClueLocationManager(Clock &clock, const QString &desktopId, const SystemBus &bus)
    : m_clock(clock)
    , m_desktopId(desktopId)
{
    connect(&bus, &SystemBus::opened, this, &GeoClueLocationManager::adoptBus);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &before, const QString &now) { ownerChanged(before, now); });
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

void GeoClueLocationManager::adoptBus(const QDBusConnection &bus)
{
    m_bus = bus;
    m_watcher.setConnection(bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.addWatchedService(QStringLiteral("org.freedesktop.GeoClue2"));
    if (m_isPermissionWanted || m_isLocationWanted)
        ensureSession();
    else if (!bus.isConnected())
        setCondition(GeoClueCondition::absent);
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
    if (!m_bus || m_session)
        return;
    m_isPermissionWanted = false;
    m_session = std::make_unique<GeoClueSession>(*m_bus, m_clock, m_desktopId);
    connect(m_session.get(), &GeoClueSession::granted, this, [this] { setCondition(GeoClueCondition::granted); });
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
    setCondition(why);
    if (alive && isLocationWanted)
        Q_EMIT didFail();
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

void GeoClueLocationManager::ownerChanged(const QString &before, const QString &now)
{
    const QPointer<GeoClueLocationManager> alive(this);
    if (m_session && !before.isEmpty())
        m_session->ownerLeft(before);
    // With a session under way it has been started for that session, whose answer will tell more.
    if (!alive || now.isEmpty() || m_session || m_condition == GeoClueCondition::granted)
        return;
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
