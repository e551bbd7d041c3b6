#include "apps/RunningAppsService.h"

#include "apps/SteadyRunningSet.h"

namespace moorline {

RunningAppsService::RunningAppsService(SteadyRunningSet &running, Clock &clock)
    : m_running(running)
    , m_clock(clock)
{
}

void RunningAppsService::start()
{
    m_running.refresh();
    publish();
    connect(&m_running, &SteadyRunningSet::changed, this, &RunningAppsService::publish);
    m_timer = m_clock.every(refreshInterval, [this] { m_running.refresh(); });
}

void RunningAppsService::publish()
{
    QSet<QString> identifiers;
    for (const RunningApplication &application : m_running.applications()) {
        if (application.bundleIdentifier && application.activationPolicy == ActivationPolicy::regular)
            identifiers.insert(*application.bundleIdentifier);
    }
    if (identifiers == m_runningBundleIDs)
        return;
    m_runningBundleIDs = identifiers;
    Q_EMIT runningBundleIDsChanged();
}

} // namespace moorline
