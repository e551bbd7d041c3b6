#import "platform/macos/MacNetwork.h"

#include <QPointer>
#include <utility>

namespace moorline {

MacNetwork::MacNetwork()
    : m_monitor(nw_path_monitor_create())
{
    // A report may already be under way when the monitor is cancelled.
    const QPointer<MacNetwork> alive(this);
    nw_path_monitor_set_queue(m_monitor, dispatch_get_main_queue());
    nw_path_monitor_set_update_handler(m_monitor, ^(nw_path_t path) {
        if (alive)
            alive->setReachable(nw_path_get_status(path) == nw_path_status_satisfied);
    });
    nw_path_monitor_start(m_monitor);
}

MacNetwork::~MacNetwork()
{
    nw_path_monitor_cancel(m_monitor);
}

void MacNetwork::setReachable(bool reachable)
{
    const bool wasReachable = std::exchange(m_isReachable, reachable);
    if (!std::exchange(m_hasReport, true) && reachable == wasReachable)
        return;
    m_hasChanged = !m_isListening;
    if (std::exchange(m_isListening, false))
        Q_EMIT changed();
}

bool MacNetwork::takeChanges()
{
    return std::exchange(m_hasChanged, false);
}

} // namespace moorline
