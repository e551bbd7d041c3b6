#pragma once

#include "platform/Clock.h"

#include <QObject>
#include <QSocketNotifier>
#include <unordered_map>

namespace moorline {

/// The processes that this one started: sees each of them end, so that none stays behind dead.
class ChildProcesses final : public QObject {
    Q_OBJECT
public:
    /// How often is looked where the system cannot tell.
    static constexpr std::chrono::seconds lookInterval{2};

    /// The clock outlives it.
    explicit ChildProcesses(Clock &clock);
    ~ChildProcesses() override;

    void watch(qint64 process);

Q_SIGNALS:
    void ended(qint64 process);

private:
    struct Child;

    void look(qint64 process);
    void lookAtAll();

    Clock &m_clock;
    std::unordered_map<qint64, std::unique_ptr<Child>> m_children;
    /// While there is a child that nobody tells of.
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
