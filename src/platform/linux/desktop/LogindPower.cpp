#include "platform/linux/desktop/LogindPower.h"

#include "platform/linux/bus/SystemBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

namespace moorline {

namespace {

const QString login = QStringLiteral("org.freedesktop.login1");
const QString busName = QStringLiteral("org.freedesktop.DBus");

} // namespace

LogindPower::LogindPower(const SystemBus &bus)
{
    connect(&bus, &SystemBus::opened, this, &LogindPower::listen);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &, const QString &now) { m_owner = now; });
}

void LogindPower::listen(QDBusConnection bus)
{
    m_watcher.setConnection(bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.addWatchedService(login);
    // Without a name: with one, Qt asks the bus who that is and waits for the answer.
    bus.connect({}, QStringLiteral("/org/freedesktop/login1"), QStringLiteral("org.freedesktop.login1.Manager"),
        QStringLiteral("PrepareForSleep"), this, SLOT(notePreparation(QDBusMessage)));
    findOwner(bus);
}

void LogindPower::findOwner(const QDBusConnection &bus)
{
    auto question =
        QDBusMessage::createMethodCall(busName, QStringLiteral("/"), busName, QStringLiteral("GetNameOwner"));
    question << login;
    const auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *call) {
        call->deleteLater();
        if (!call->isError())
            m_owner = call->reply().arguments().value(0).toString();
    });
}

/// logind says "true" before and "false" after.
void LogindPower::notePreparation(const QDBusMessage &message)
{
    const bool isFromLogind = !m_owner.isEmpty() && message.service() == m_owner;
    if (isFromLogind && message.signature() == QLatin1StringView("b") && !message.arguments().constFirst().toBool())
        Q_EMIT didWake();
}

} // namespace moorline
