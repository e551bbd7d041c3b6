#pragma once

#include "platform/Clock.h"

#include <QDBusConnection>
#include <QObject>

QT_BEGIN_NAMESPACE
class QThread;
QT_END_NAMESPACE

namespace moorline {

/// The system bus, opened soon after the start and not before. Opening waits for the bus, for half a minute where it
/// hangs, so another thread does that, and only once everything else that opens a connection has come up: Qt opens one
/// at a time.
class SystemBus final : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::seconds openingDelay{1};

    explicit SystemBus(Clock &clock);
    ~SystemBus() override;

Q_SIGNALS:
    /// Once, on the main thread. Where there is no system bus, `bus` is not connected.
    void opened(const QDBusConnection &bus);

private:
    void open();

    std::unique_ptr<Clock::Timer> m_delay;
    QThread *m_thread = nullptr;
};

} // namespace moorline
