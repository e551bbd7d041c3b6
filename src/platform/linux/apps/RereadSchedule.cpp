#include "platform/linux/apps/RereadSchedule.h"

#include <utility>

namespace moorline {

RereadSchedule::RereadSchedule(Clock &clock, std::function<void()> read)
    : m_clock(clock)
    , m_read(std::move(read))
{
}

void RereadSchedule::begin()
{
    m_timer.reset();
    m_isReading = true;
    m_isOutdated = false;
}

void RereadSchedule::end(std::shared_ptr<FolderEvents> events)
{
    m_isReading = false;
    follow(std::move(events));
    if (std::exchange(m_isOutdated, false))
        noteNews();
}

void RereadSchedule::follow(std::shared_ptr<FolderEvents> events)
{
    m_notifier.reset();
    m_events = std::move(events);
    if (m_events->descriptor() < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_events->descriptor(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        if (m_events->takeNews())
            noteNews();
    });
}

void RereadSchedule::noteNews()
{
    if (m_isReading)
        m_isOutdated = true;
    else if (!m_timer)
        m_timer = m_clock.after(batchTime, m_read);
}

} // namespace moorline
