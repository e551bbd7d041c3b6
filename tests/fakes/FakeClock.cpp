#include "fakes/FakeClock.h"

#include <algorithm>

namespace moorline::test {

using std::chrono::milliseconds;

class FakeClock::Handle final : public Clock::Timer {
public:
    Handle(std::weak_ptr<FakeClock *> clock, quint64 id)
        : m_clock(std::move(clock))
        , m_id(id)
    {
    }
    ~Handle() override
    {
        if (const auto clock = m_clock.lock())
            (*clock)->m_entries.erase(m_id);
    }

private:
    std::weak_ptr<FakeClock *> m_clock;
    quint64 m_id;
};

FakeClock::FakeClock(QDateTime start)
    : m_start(std::move(start))
    , m_self(std::make_shared<FakeClock *>(this))
{
}

FakeClock::~FakeClock() = default;

std::unique_ptr<Clock::Timer> FakeClock::every(milliseconds interval, Callback tick)
{
    return add(interval, std::max(interval, milliseconds(1)), std::move(tick));
}

std::unique_ptr<Clock::Timer> FakeClock::after(milliseconds delay, Callback fire)
{
    return add(delay, milliseconds(0), std::move(fire));
}

std::unique_ptr<Clock::Timer> FakeClock::add(milliseconds delay, milliseconds interval, Callback callback)
{
    const quint64 id = ++m_lastId;
    m_entries.emplace(id, Entry{m_uptime + delay, interval, std::move(callback)});
    return std::make_unique<Handle>(m_self, id);
}

FakeClock::Entries::iterator FakeClock::nextDue(milliseconds until)
{
    const auto earlier = [](const auto &a, const auto &b) { return a.second.due < b.second.due; };
    const auto next = std::min_element(m_entries.begin(), m_entries.end(), earlier);
    return next != m_entries.end() && next->second.due <= until ? next : m_entries.end();
}

void FakeClock::advance(milliseconds duration)
{
    const milliseconds until = m_uptime + duration;
    for (auto next = nextDue(until); next != m_entries.end(); next = nextDue(until)) {
        m_uptime = std::max(m_uptime, next->second.due);
        const Callback callback = next->second.callback;
        if (next->second.interval > milliseconds::zero())
            next->second.due += next->second.interval;
        else
            m_entries.erase(next);
        callback();
    }
    m_uptime = until;
}

QList<milliseconds> FakeClock::repeatingIntervals() const
{
    QList<milliseconds> intervals;
    for (const auto &[id, entry] : m_entries) {
        if (entry.interval > milliseconds::zero())
            intervals.append(entry.interval);
    }
    std::sort(intervals.begin(), intervals.end());
    return intervals;
}

} // namespace moorline::test
