#include "time/TimeKeeper.h"

namespace moorline {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds tickInterval = 500ms;

} // namespace

TimeKeeper::TimeKeeper(Clock &clock, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_now(clock.now())
{
}

void TimeKeeper::start()
{
    m_timer = m_clock.every(tickInterval, [this] { tick(); });
}

void TimeKeeper::tick()
{
    const QDateTime now = m_clock.now();
    // The same moment reads differently in another time zone.
    if (now == m_now && now.offsetFromUtc() == m_now.offsetFromUtc())
        return;
    m_now = now;
    Q_EMIT nowChanged();
}

} // namespace moorline
