#pragma once

#include "platform/Clock.h"
#include "platform/Workspace.h"

#include <QHash>

namespace moorline {

/// The applications that run, without the gaps that come of knowing them by their windows: while no window manager
/// runs, and between a splash screen and the window after it, they go on.
class SteadyRunningSet final : public QObject {
    Q_OBJECT
public:
    /// How long the last answer holds while the system cannot tell.
    static constexpr std::chrono::seconds unknownGrace{5};
    /// How long an application goes on whose last window went, where that counts as its end.
    static constexpr std::chrono::milliseconds lastWindowGrace{500};

    /// What is lent here outlives the set. Empty until the first refresh; from then on it follows the workspace.
    SteadyRunningSet(const Workspace &workspace, Clock &clock);

    /// Asks now.
    void refresh();

    /// Whether the system could ever tell.
    [[nodiscard]] bool isKnown() const { return m_isKnown; }
    /// None of them is terminated.
    [[nodiscard]] const QList<RunningApplication> &applications() const { return m_applications; }

Q_SIGNALS:
    /// The applications changed, or are known for the first time.
    void changed();

private:
    void bridgeUnknown();
    void keepDeparted(QList<RunningApplication> &applications);
    void awaitDeparture();
    void setApplications(const QList<RunningApplication> &applications);

    const Workspace &m_workspace;
    Clock &m_clock;
    bool m_isKnown = false;
    QList<RunningApplication> m_applications;
    /// When each that has gone, by identifier, is to be let go of.
    QHash<QString, std::chrono::milliseconds> m_departures;
    std::unique_ptr<Clock::Timer> m_unknownTimer;
    std::unique_ptr<Clock::Timer> m_departureTimer;
};

} // namespace moorline
