#include "apps/SteadyRunningSet.h"

#include <QSet>
#include <algorithm>

namespace moorline {

namespace {

/// Absent for one that nobody sees running.
std::optional<QString> regularIdentifier(const RunningApplication &application)
{
    return application.activationPolicy == ActivationPolicy::regular ? application.bundleIdentifier : std::nullopt;
}

QSet<QString> regularIdentifiers(const QList<RunningApplication> &applications)
{
    QSet<QString> identifiers;
    for (const RunningApplication &application : applications) {
        if (const auto identifier = regularIdentifier(application))
            identifiers.insert(*identifier);
    }
    return identifiers;
}

} // namespace

SteadyRunningSet::SteadyRunningSet(const Workspace &workspace, Clock &clock)
    : m_workspace(workspace)
    , m_clock(clock)
{
    connect(&workspace, &Workspace::applicationLaunched, this, &SteadyRunningSet::refresh);
    connect(&workspace, &Workspace::applicationTerminated, this, &SteadyRunningSet::refresh);
}

void SteadyRunningSet::refresh()
{
    auto applications = m_workspace.runningApplications();
    if (!applications) {
        bridgeUnknown();
        return;
    }
    m_unknownTimer.reset();
    applications->removeIf([](const RunningApplication &application) { return application.isTerminated; });
    if (m_workspace.endsWithLastWindow())
        keepDeparted(*applications);
    setApplications(*applications);
}

void SteadyRunningSet::bridgeUnknown()
{
    if (m_unknownTimer || m_applications.isEmpty())
        return;
    m_departures.clear();
    m_departureTimer.reset();
    m_unknownTimer = m_clock.after(unknownGrace, [this] { setApplications({}); });
}

void SteadyRunningSet::keepDeparted(QList<RunningApplication> &applications)
{
    const QSet<QString> present = regularIdentifiers(applications);
    QHash<QString, std::chrono::milliseconds> departures;
    for (const RunningApplication &application : std::as_const(m_applications)) {
        const auto identifier = regularIdentifier(application);
        if (!identifier || present.contains(*identifier))
            continue;
        const auto deadline = m_departures.value(*identifier, m_clock.uptime() + lastWindowGrace);
        if (deadline <= m_clock.uptime())
            continue;
        departures.insert(*identifier, deadline);
        applications.append(application);
    }
    m_departures = departures;
    awaitDeparture();
}

void SteadyRunningSet::awaitDeparture()
{
    if (m_departures.isEmpty()) {
        m_departureTimer.reset();
        return;
    }
    const auto next = *std::min_element(m_departures.constBegin(), m_departures.constEnd());
    m_departureTimer = m_clock.after(next - m_clock.uptime(), [this] { refresh(); });
}

void SteadyRunningSet::setApplications(const QList<RunningApplication> &applications)
{
    if (applications == m_applications && m_isKnown)
        return;
    m_isKnown = true;
    m_applications = applications;
    Q_EMIT changed();
}

} // namespace moorline
