#include "weather/RetrySchedule.h"

namespace moorline {

RetrySchedule::RetrySchedule(Clock &clock, Clock::Callback retry)
    : m_clock(clock)
    , m_retry(std::move(retry))
{
}

void RetrySchedule::reset()
{
    m_firstFailure.reset();
    m_timer.reset();
}

void RetrySchedule::pause()
{
    m_timer.reset();
}

void RetrySchedule::noteFailure()
{
    if (!m_firstFailure)
        m_firstFailure = m_clock.uptime();
    const std::chrono::milliseconds passed = m_clock.uptime() - *m_firstFailure;
    m_timer.reset();
    for (const std::chrono::milliseconds moment : moments) {
        if (moment <= passed)
            continue;
        m_timer = m_clock.after(moment - passed, m_retry);
        return;
    }
}

} // namespace moorline
