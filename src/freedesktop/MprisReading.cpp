#include "freedesktop/MprisReading.h"

#include <algorithm>
#include <utility>

namespace moorline {

using std::chrono::milliseconds;

bool MprisReading::isDue(bool isKnown, std::optional<milliseconds> trust, milliseconds uptime) const
{
    const bool isTrusted = isKnown && m_readAt && (!trust || uptime - *m_readAt < *trust);
    return m_state == State::idle && !isTrusted;
}

std::optional<milliseconds> MprisReading::noteChange(milliseconds uptime)
{
    if (m_state == State::idle)
        return gather(uptime);
    m_hasNews = m_state == State::asking;
    return std::nullopt;
}

void MprisReading::distrust()
{
    m_readAt.reset();
    m_isOutdated = m_state == State::asking;
}

void MprisReading::begin(milliseconds uptime)
{
    if (m_state == State::gathering)
        m_heardAt = uptime;
    m_state = State::asking;
}

std::optional<milliseconds> MprisReading::end(milliseconds uptime)
{
    m_state = State::idle;
    m_readAt = std::exchange(m_isOutdated, false) ? std::nullopt : std::optional(uptime);
    return std::exchange(m_hasNews, false) ? std::optional(gather(uptime)) : std::nullopt;
}

milliseconds MprisReading::gather(milliseconds uptime)
{
    m_state = State::gathering;
    const bool isAtItAgain = m_heardAt && uptime - *m_heardAt < m_patience;
    m_patience = isAtItAgain ? std::min(2 * m_patience, m_longest) : gatheringTime;
    return m_patience;
}

} // namespace moorline
