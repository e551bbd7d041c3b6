#include "platform/linux/bus/Bus.h"

namespace moorline {

Bus::Bus(QObject *parent)
    : QObject(parent)
    , m_connection(QString())
{
}

void Bus::adopt(const QDBusConnection &connection)
{
    m_connection = connection;
    m_state = connection.isConnected() ? State::open : State::absent;
    // A signal of the library's own, which no bus passes on: the other end of the connection has gone.
    if (isOpen()) {
        m_connection.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
            QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this, SLOT(end()));
    }
    Q_EMIT stateChanged();
}

void Bus::end()
{
    // One that was left for another may end later.
    if (m_state != State::open || m_connection.isConnected())
        return;
    m_state = State::absent;
    Q_EMIT stateChanged();
}

} // namespace moorline
