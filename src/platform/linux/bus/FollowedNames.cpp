#include "platform/linux/bus/FollowedNames.h"

#include "platform/linux/bus/PendingBusCall.h"

#include <QPointer>
#include <utility>

namespace moorline {

namespace {

// The bus itself answers, and does so at once or is beyond help.
constexpr std::chrono::seconds answerLimit{30};

QDBusMessage busCall(const QString &method)
{
    return QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace

FollowedNames::FollowedNames(Bus &bus, Clock &clock, const QString &beginning)
    : m_bus(bus)
    , m_clock(clock)
    , m_beginning(beginning)
{
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &name, const QString &, const QString &now) { note(name, now); });
    connect(&bus, &Bus::stateChanged, this, &FollowedNames::follow);
    if (bus.isOpen())
        follow();
}

void FollowedNames::follow()
{
    ++m_generation;
    m_watcher.setWatchedServices({});
    m_watcher.setConnection(m_bus.connection());
    if (m_bus.isOpen()) {
        // Which Qt takes for whole parts of a name.
        m_watcher.addWatchedService(m_beginning + u'*');
        findOwners();
    }
    if (!std::exchange(m_owners, {}).isEmpty())
        Q_EMIT ownersChanged();
}

QCoro::Task<> FollowedNames::findOwners()
{
    const QPointer<FollowedNames> alive(this);
    const int generation = m_generation;
    const BusAnswer listed = co_await ask(*this, m_bus, m_clock, busCall(QStringLiteral("ListNames")), answerLimit);
    const QStringList names = listed.value<QStringList>().value_or(QStringList());
    for (const QString &name : names) {
        if (!alive || generation != m_generation)
            co_return;
        if (!name.startsWith(m_beginning + u'.'))
            continue;
        const BusAnswer owner =
            co_await ask(*this, m_bus, m_clock, busCall(QStringLiteral("GetNameOwner")) << name, answerLimit);
        // The bus keeps the order of what it answers and what it tells: an answer is never older than what was heard.
        if (alive && generation == m_generation)
            setOwner(name, owner.value<QString>().value_or(QString()));
    }
}

void FollowedNames::note(const QString &name, const QString &owner)
{
    if (name.startsWith(m_beginning + u'.'))
        setOwner(name, owner);
}

void FollowedNames::setOwner(const QString &name, const QString &owner)
{
    if (m_owners.value(name) == owner)
        return;
    if (owner.isEmpty())
        m_owners.remove(name);
    else
        m_owners.insert(name, owner);
    Q_EMIT ownersChanged();
}

} // namespace moorline
