#pragma once

#include "platform/Clock.h"
#include "platform/linux/apps/LaunchHold.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QSocketNotifier>
#include <unordered_map>

namespace moorline {

class Bus;
class BusSignal;

/// Has the user's service manager, where there is one on the bus, keep each process that is started as an application
/// of its own beside this program: what becomes of this program is nothing to it then. The process waits for that
/// before it becomes the program, so that whatever it starts is kept with it.
class LaunchScopes final : public QObject {
    Q_OBJECT
public:
    /// How long a process waits at most.
    static constexpr std::chrono::milliseconds patience{500};

    /// Both outlive it.
    LaunchScopes(Bus &bus, Clock &clock, std::chrono::milliseconds limit = patience);
    ~LaunchScopes() override;

    /// Where the processes of a launch wait, and what they are kept as. Null where none has to wait: there is no bus.
    [[nodiscard]] std::shared_ptr<const LaunchHold> hold(const QString &entryId, const QString &description);
    /// All processes of the launch went on; none waits any more. `hold` may be null.
    void release(const std::shared_ptr<const LaunchHold> &hold);

private:
    using Hold = std::shared_ptr<const LaunchHold>;

    QCoro::Task<> keep(Hold hold, qint64 process, QString entryId, QString description);
    void letGo(const QString &scope);

    Bus &m_bus;
    Clock &m_clock;
    std::chrono::milliseconds m_limit;
    /// As long as a launch is under way.
    std::unordered_map<const LaunchHold *, std::unique_ptr<QSocketNotifier>> m_notifiers;
    std::unique_ptr<BusSignal> m_ends;
    /// Who waits for a scope, by its name.
    QHash<QString, Hold> m_waiting;
};

} // namespace moorline
