#include "system/Reachability.h"

#include "platform/Network.h"

#include <utility>

namespace moorline {

Reachability::Reachability(Network &network, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_clock(clock)
    , m_wasReachable(network.isReachable())
{
    connect(&network, &Network::changed, this, &Reachability::noteChange);
    network.listen();
}

void Reachability::noteChange()
{
    m_firstChange = m_clock.uptime();
    m_wasReachable = m_wasReachable && m_network.isReachable();
    settle();
}

void Reachability::settle()
{
    m_settling = m_clock.after(settlingTime, [this] { lookWhenSettled(); });
}

void Reachability::lookWhenSettled()
{
    const bool isStillChanging = m_network.takeChanges();
    if (isStillChanging && m_clock.uptime() - m_firstChange < longestWait) {
        m_wasReachable = m_wasReachable && m_network.isReachable();
        return settle();
    }
    m_network.listen();
    const bool wasReachable = std::exchange(m_wasReachable, m_network.isReachable());
    if (m_wasReachable && !wasReachable)
        Q_EMIT becameReachable();
}

} // namespace moorline
