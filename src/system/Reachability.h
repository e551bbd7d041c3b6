#pragma once

#include "platform/Clock.h"

#include <QObject>

namespace moorline {

class Network;

/// When the internet is within reach again after it was not: what failed meanwhile is worth another try. A way that was
/// lost even for a moment counts, as after a sleep: what was asked in that moment has failed.
class Reachability final : public QObject {
    Q_OBJECT
public:
    /// Addresses, routes and name servers follow a link one after the other; this long after the last change they are
    /// all there.
    static constexpr std::chrono::seconds settlingTime{2};
    /// Changes that do not come to an end are not waited for any longer.
    static constexpr std::chrono::seconds longestWait{10};

    /// Both outlive it. How things are now is no news.
    Reachability(Network &network, Clock &clock, QObject *parent = nullptr);

Q_SIGNALS:
    /// What answers names may follow a moment later.
    void becameReachable();

private:
    void noteChange();
    void settle();
    void lookWhenSettled();

    Network &m_network;
    Clock &m_clock;
    /// Without a gap, as far as is known.
    bool m_wasReachable;
    std::chrono::milliseconds m_firstChange{0};
    std::unique_ptr<Clock::Timer> m_settling;
};

} // namespace moorline
