#include "platform/linux/bus/SystemBus.h"

#include <QThread>

namespace moorline {

SystemBus::SystemBus(Clock &clock)
    : m_delay(clock.after(openingDelay, [this] { open(); }))
{
}

SystemBus::~SystemBus()
{
    if (!m_thread)
        return;
    // A bus that hangs is not waited for.
    m_thread->disconnect(this);
    if (m_thread->isFinished())
        delete m_thread;
    else
        connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
}

void SystemBus::open()
{
    m_thread = QThread::create([] { static_cast<void>(QDBusConnection::systemBus()); });
    m_thread->setObjectName(QStringLiteral("system bus"));
    // From here on it is there without waiting.
    connect(m_thread, &QThread::finished, this, [this] { Q_EMIT opened(QDBusConnection::systemBus()); });
    m_thread->start();
}

} // namespace moorline
