#include "platform/RetrySchedule.h"

#include <algorithm>

namespace moorline {

using std::chrono::milliseconds;

RetrySchedule::RetrySchedule(Clock &clock, Clock::Callback retry, std::optional<std::chrono::seconds> thereafter)
    : m_clock(clock)
    , m_retry(std::move(retry))
    , m_thereafter(thereafter)
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
    const milliseconds passed = m_clock.uptime() - *m_firstFailure;
    const auto moment = momentAfter(passed);
    m_timer = moment ? m_clock.after(*moment - passed, m_retry) : nullptr;
}

std::optional<milliseconds> RetrySchedule::momentAfter(milliseconds passed) const
{
    const auto *const moment = std::upper_bound(moments.begin(), moments.end(), passed);
    if (moment != moments.end())
        return *moment;
    if (!m_thereafter)
        return std::nullopt;
    const milliseconds last = moments.back();
    return last + *m_thereafter * ((passed - last) / *m_thereafter + 1);
}

} // namespace moorline
