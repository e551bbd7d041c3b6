#include "apps/PendingLaunches.h"

#include "platform/Workspace.h"

#include <algorithm>

namespace moorline {

PendingLaunches::PendingLaunches(const Workspace &workspace, const Clock &clock)
    : m_workspace(workspace)
    , m_clock(clock)
{
    connect(&workspace, &Workspace::applicationLaunched, this, &PendingLaunches::endThoseThatRun);
    connect(&workspace, &Workspace::launchEnded, this, &PendingLaunches::end);
}

bool PendingLaunches::begin(const QString &path, const std::optional<QString> &identifier)
{
    const auto now = m_clock.uptime();
    m_launches.removeIf([now](const auto &launch) { return launch.value().deadline <= now; });
    if (isUnderWay(path, identifier))
        return false;
    m_launches.insert(path, {.identifier = identifier, .deadline = now + patience});
    return true;
}

void PendingLaunches::end(const QString &path)
{
    m_launches.remove(path);
}

bool PendingLaunches::isUnderWay(const QString &path, const std::optional<QString> &identifier) const
{
    const auto isSame = [&identifier](const Launch &launch) { return launch.identifier == identifier; };
    return m_launches.contains(path) || (identifier && std::any_of(m_launches.begin(), m_launches.end(), isSame));
}

void PendingLaunches::endThoseThatRun()
{
    if (m_launches.isEmpty())
        return;
    const auto running = m_workspace.runningApplications().value_or(QList<RunningApplication>());
    m_launches.removeIf([&running](const auto &launch) {
        return std::any_of(running.begin(), running.end(), [&launch](const RunningApplication &application) {
            const auto &identifier = launch.value().identifier;
            const bool isSame =
                application.bundlePath == launch.key() || (identifier && application.bundleIdentifier == identifier);
            return isSame && application.activationPolicy == ActivationPolicy::regular && !application.isTerminated;
        });
    });
}

} // namespace moorline
