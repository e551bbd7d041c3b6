#pragma once

#include "platform/Clock.h"

#include <QObject>
#include <QSet>
#include <QString>

namespace moorline {

class SteadyRunningSet;

/// Publishes which applications run now.
class RunningAppsService final : public QObject {
    Q_OBJECT
public:
    /// How often the system is asked in case it did not tell.
    static constexpr std::chrono::milliseconds refreshInterval{2000};

    /// What is lent here outlives the service.
    RunningAppsService(SteadyRunningSet &running, Clock &clock);

    void start();

    /// The bundle identifiers of the regular applications, this one among them.
    [[nodiscard]] const QSet<QString> &runningBundleIDs() const { return m_runningBundleIDs; }
    [[nodiscard]] bool isRunning(const std::optional<QString> &bundleIdentifier) const
    {
        return bundleIdentifier && m_runningBundleIDs.contains(*bundleIdentifier);
    }

Q_SIGNALS:
    void runningBundleIDsChanged();

private:
    void publish();

    SteadyRunningSet &m_running;
    Clock &m_clock;
    QSet<QString> m_runningBundleIDs;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
