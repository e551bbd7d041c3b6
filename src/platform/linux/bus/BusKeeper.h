#pragma once

#include "platform/Clock.h"
#include "platform/linux/bus/BusProbe.h"

#include <QDBusConnection>
#include <QObject>
#include <memory>

QT_BEGIN_NAMESPACE
class QThread;
QT_END_NAMESPACE

namespace moorline {

class Bus;

/// Opens a bus when it is told to and, when it has ended, again once it is back. A bus may hang in the opening, so
/// another thread waits for it.
class BusKeeper final : public QObject {
    Q_OBJECT
public:
    /// How long after its end a bus is looked for, and how often from then on.
    static constexpr std::chrono::seconds searchInterval{2};

    /// Both outlive it.
    BusKeeper(BusKind kind, Bus &bus, Clock &clock);
    ~BusKeeper() override;

    /// Once. The other thread reads the environment then.
    void open();
    void openAfter(std::chrono::milliseconds delay);

Q_SIGNALS:
    /// The bus that is being opened answers, or there is none. One that hangs is never told of.
    void answered(bool isThere);

private:
    void opened(bool isThere);
    void searchIfGone();

    BusKind m_kind;
    Bus &m_bus;
    Clock &m_clock;
    /// How many connections there were, each of which has a name of its own.
    int m_generation = 0;
    bool m_wasOpen = false;
    std::unique_ptr<Clock::Timer> m_timer;
    std::shared_ptr<BusProbe> m_probe;
    QThread *m_thread = nullptr;
};

} // namespace moorline
