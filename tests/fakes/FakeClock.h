#pragma once

#include "platform/Clock.h"

#include <map>

namespace moorline::test {

/// Time that moves only when told to. Timers fire in the order in which they are due, at the moment they are due.
class FakeClock final : public Clock {
public:
    explicit FakeClock(QDateTime start = QDateTime(QDate(2025, 3, 4), QTime(13, 5, 9)));
    ~FakeClock() override;

    [[nodiscard]] QDateTime now() const override { return m_start.addMSecs(m_uptime.count()); }
    [[nodiscard]] std::chrono::milliseconds uptime() const override { return m_uptime; }
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Callback tick) override;
    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::milliseconds delay, Callback fire) override;

    void advance(std::chrono::milliseconds duration);
    /// Sets the wall clock alone, as a user or a time server does.
    void setNow(const QDateTime &now) { m_start = now.addMSecs(-m_uptime.count()); }
    [[nodiscard]] qsizetype runningTimers() const { return qsizetype(m_entries.size()); }
    /// The intervals of the repeating timers that run now, shortest first.
    [[nodiscard]] QList<std::chrono::milliseconds> repeatingIntervals() const;

private:
    struct Entry {
        std::chrono::milliseconds due;
        std::chrono::milliseconds interval;
        Callback callback;
    };
    class Handle;
    using Entries = std::map<quint64, Entry>;

    std::unique_ptr<Timer> add(std::chrono::milliseconds delay, std::chrono::milliseconds interval, Callback callback);
    [[nodiscard]] Entries::iterator nextDue(std::chrono::milliseconds until);

    QDateTime m_start;
    std::chrono::milliseconds m_uptime{0};
    /// Shared with the handles, which may outlive the clock in a failing test.
    std::shared_ptr<FakeClock *> m_self;
    Entries m_entries;
    quint64 m_lastId = 0;
};

} // namespace moorline::test
