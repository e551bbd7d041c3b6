#include "platform/linux/bus/BusKeeper.h"

#include "platform/linux/bus/Bus.h"

#include <QPointer>
#include <QThread>
#include <functional>

namespace moorline {

namespace {

QString connectionName(BusKind kind, int generation)
{
    const auto text =
        kind == BusKind::session ? QStringLiteral("moorline-session-%1") : QStringLiteral("moorline-system-%1");
    return text.arg(generation);
}

/// Waits for the bus. What Qt makes of it is there without waiting afterwards.
bool openBus(BusKind kind, BusProbe &probe, const std::function<void(bool)> &tell, const QString &name)
{
    const bool isThere = probe.answers();
    tell(isThere);
    if (!isThere)
        return false;
    probe.outliveSharedConnection();
    const auto type = kind == BusKind::session ? QDBusConnection::SessionBus : QDBusConnection::SystemBus;
    return QDBusConnection::connectToBus(type, name).isConnected();
}

/// Tells the keeper from the thread that it started. The thread's object lives where the keeper lives or lived.
std::function<void(bool)> telling(BusKeeper &keeper)
{
    return [alive = QPointer(&keeper)](bool isThere) {
        const auto tell = [alive, isThere] {
            if (alive)
                Q_EMIT alive->answered(isThere);
        };
        QMetaObject::invokeMethod(QThread::currentThread(), tell, Qt::QueuedConnection);
    };
}

} // namespace

BusKeeper::BusKeeper(BusKind kind, Bus &bus, Clock &clock)
    : m_kind(kind)
    , m_bus(bus)
    , m_clock(clock)
{
    connect(&bus, &Bus::stateChanged, this, &BusKeeper::searchIfGone);
}

BusKeeper::~BusKeeper()
{
    QDBusConnection::disconnectFromBus(connectionName(m_kind, m_generation));
    if (!m_thread)
        return;
    m_probe->cancel();
    // A bus that hangs is not waited for.
    m_thread->disconnect(this);
    if (m_thread->isFinished())
        delete m_thread;
    else
        connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
}

void BusKeeper::openAfter(std::chrono::milliseconds delay)
{
    m_timer = m_clock.after(delay, [this] { open(); });
}

void BusKeeper::open()
{
    m_timer.reset();
    QDBusConnection::disconnectFromBus(connectionName(m_kind, m_generation));
    m_probe = std::make_shared<BusProbe>(m_kind);
    const auto isThere = std::make_shared<bool>(false);
    m_thread = QThread::create(
        [isThere, tell = telling(*this), kind = m_kind, probe = m_probe,
            name = connectionName(m_kind, ++m_generation)] { *isThere = openBus(kind, *probe, tell, name); });
    m_thread->setObjectName(m_kind == BusKind::session ? QStringLiteral("session bus") : QStringLiteral("system bus"));
    connect(m_thread, &QThread::finished, this, [this, isThere] { opened(*isThere); });
    m_thread->start();
}

void BusKeeper::opened(bool isThere)
{
    std::exchange(m_thread, nullptr)->deleteLater();
    if (isThere || !m_wasOpen)
        m_bus.adopt(QDBusConnection(connectionName(m_kind, m_generation)));
    else
        searchIfGone();
}

/// One that was never there is not looked for: some would be started by that.
void BusKeeper::searchIfGone()
{
    m_wasOpen = m_wasOpen || m_bus.isOpen();
    if (m_wasOpen && !m_bus.isOpen())
        openAfter(searchInterval);
}

} // namespace moorline
