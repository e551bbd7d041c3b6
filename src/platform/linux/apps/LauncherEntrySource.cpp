#include "platform/linux/apps/LauncherEntrySource.h"

#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/PendingBusCall.h"

#include <QDBusArgument>
#include <QPointer>

namespace moorline {

namespace {

// The bus itself answers, and does so at once or is beyond help.
constexpr std::chrono::seconds answerLimit{30};

const QString launcherName = QStringLiteral("com.canonical.Unity");

QDBusMessage busCall(const QString &method)
{
    return QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace

LauncherEntrySource::LauncherEntrySource(Bus &sessionBus, DesktopEntries &entries, Clock &clock)
    : m_bus(sessionBus)
    , m_entries(entries)
    , m_clock(clock)
{
    m_senders.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_senders, &QDBusServiceWatcher::serviceUnregistered, this, &LauncherEntrySource::forget);
    connect(&sessionBus, &Bus::stateChanged, this, &LauncherEntrySource::watchBus);
    connect(&entries, &AppBundles::changed, this, &LauncherEntrySource::noteChange);
}

LauncherEntrySource::~LauncherEntrySource()
{
    if (m_updates)
        askForName(false);
}

void LauncherEntrySource::setActive(bool active)
{
    if (active == (m_updates != nullptr))
        return;
    if (!active) {
        m_updates.reset();
        askForName(false);
        forgetAll();
        return;
    }
    m_updates = std::make_unique<BusSignal>(m_bus, QString(),
        BusSignalAddress{.path = {},
            .interface = QStringLiteral("com.canonical.Unity.LauncherEntry"),
            .member = QStringLiteral("Update")},
        [this](const QDBusMessage &message) { take(message); });
    watchBus();
}

QCoro::Task<QList<BadgeTile>> LauncherEntrySource::tiles()
{
    QList<BadgeTile> tiles;
    const QList<LauncherEntries::Badge> badges = m_told.badges(*m_entries.catalogue());
    for (const auto &badge : badges)
        tiles.append({.path = badge.path, .label = badge.label});
    co_return tiles;
}

void LauncherEntrySource::take(const QDBusMessage &message)
{
    if (!m_updates || message.signature() != u"sa{sv}")
        return;
    const QString sender = message.service();
    const QStringList before = m_told.senders();
    const QString address = message.arguments().constFirst().toString();
    if (!m_told.update(sender, address, qdbus_cast<QVariantMap>(message.arguments().at(1))))
        return;
    if (!before.contains(sender))
        follow(sender);
    noteChange();
}

void LauncherEntrySource::follow(const QString &sender)
{
    // Those that were forgotten over the many others.
    const QStringList living = m_told.senders();
    const QStringList watched = m_senders.watchedServices();
    for (const QString &one : watched) {
        if (!living.contains(one))
            m_senders.removeWatchedService(one);
    }
    m_senders.addWatchedService(sender);
    lookFor(sender);
}

/// It may have gone before anybody watched it: whoever tells one thing and ends.
QCoro::Task<> LauncherEntrySource::lookFor(QString sender)
{
    const QPointer<LauncherEntrySource> alive(this);
    auto question = busCall(QStringLiteral("NameHasOwner"));
    question << sender;
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, question, answerLimit);
    if (alive && !answer.value<bool>().value_or(false))
        forget(sender);
}

void LauncherEntrySource::forget(const QString &sender)
{
    m_senders.removeWatchedService(sender);
    m_told.removeSender(sender);
    noteChange();
}

void LauncherEntrySource::forgetAll()
{
    m_senders.setWatchedServices({});
    m_told.clear();
    noteChange();
}

void LauncherEntrySource::watchBus()
{
    forgetAll();
    m_senders.setConnection(m_bus.connection());
    if (m_updates)
        askForName(true);
}

/// The bus keeps whoever is late in line, so that a launcher that ends has a successor.
void LauncherEntrySource::askForName(bool isWanted)
{
    if (!m_bus.isOpen())
        return;
    auto call = busCall(isWanted ? QStringLiteral("RequestName") : QStringLiteral("ReleaseName"));
    call << launcherName;
    if (isWanted)
        call << quint32(0);
    m_bus.connection().send(call);
}

void LauncherEntrySource::noteChange()
{
    if (m_settling)
        return;
    m_settling = m_clock.after(settlingTime, [this] {
        m_settling.reset();
        Q_EMIT changed();
    });
}

} // namespace moorline
