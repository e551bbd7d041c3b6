#include "platform/linux/bus/FollowedName.h"

#include "platform/linux/bus/PendingBusCall.h"

#include <QPointer>
#include <utility>

namespace moorline {

namespace {

// The bus itself answers, and does so at once or is beyond help.
constexpr std::chrono::seconds answerLimit{30};

} // namespace

FollowedName::FollowedName(Bus &bus, Clock &clock, const QString &name, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_clock(clock)
    , m_name(name)
{
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &, const QString &now) {
            ++m_news;
            setOwner(now);
        });
    connect(&bus, &Bus::stateChanged, this, &FollowedName::follow);
    if (bus.isOpen())
        follow();
}

void FollowedName::follow()
{
    ++m_news;
    m_watcher.setWatchedServices({});
    m_watcher.setConnection(m_bus.connection());
    if (m_bus.isOpen()) {
        m_watcher.addWatchedService(m_name);
        findOwner();
    }
    setOwner({});
}

QCoro::Task<> FollowedName::findOwner()
{
    const QPointer<FollowedName> alive(this);
    const int news = m_news;
    auto question = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
    question << m_name;
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, question, answerLimit);
    if (alive && news == m_news)
        setOwner(answer.value<QString>().value_or(QString()));
}

void FollowedName::setOwner(const QString &owner)
{
    const QString before = std::exchange(m_owner, owner);
    if (before != owner)
        Q_EMIT ownerChanged(before, owner);
}

} // namespace moorline
