#pragma once

#include "freedesktop/LauncherEntries.h"
#include "platform/BadgeSource.h"
#include "platform/Clock.h"
#include "platform/linux/bus/BusSignal.h"

#include <QDBusServiceWatcher>
#include <memory>

namespace moorline {

class Bus;
class DesktopEntries;

/// The counts that applications want to see on their icons, as they tell them over the session bus to whoever shows
/// any.
class LauncherEntrySource final : public BadgeSource {
    Q_OBJECT
public:
    /// What is told within this is one change: some programs tell of every step.
    static constexpr std::chrono::milliseconds settlingTime{50};

    /// What is lent outlives it.
    LauncherEntrySource(Bus &sessionBus, DesktopEntries &entries, Clock &clock);
    ~LauncherEntrySource() override;

    /// Applications tell nothing before somebody has the name that stands for a launcher. It is had while this is
    /// active, unless another launcher has it; then what that one is told is heard as well.
    void setActive(bool active) override;
    /// Nobody has to be asked.
    [[nodiscard]] bool isPermitted() const override { return true; }
    [[nodiscard]] QCoro::Task<QList<BadgeTile>> tiles() override;

private:
    void take(const QDBusMessage &message);
    void follow(const QString &sender);
    QCoro::Task<> lookFor(QString sender);
    void forget(const QString &sender);
    void forgetAll();
    void watchBus();
    void askForName(bool isWanted);
    void noteChange();

    Bus &m_bus;
    DesktopEntries &m_entries;
    Clock &m_clock;
    LauncherEntries m_told;
    QDBusServiceWatcher m_senders;
    std::unique_ptr<BusSignal> m_updates;
    std::unique_ptr<Clock::Timer> m_settling;
};

} // namespace moorline
