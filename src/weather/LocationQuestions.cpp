#include "weather/LocationQuestions.h"

namespace moorline {

bool LocationQuestions::mayAsk(Time now) const
{
    if (!m_asked)
        return true;
    const Time passed = now - *m_asked;
    return passed >= patience || (m_hastyRefusals > 0 && passed >= retryDelay);
}

void LocationQuestions::asked(Time now)
{
    m_asked = now;
}

void LocationQuestions::refused(Time now)
{
    const bool isHasty = m_asked && now - *m_asked < shortestDecision;
    m_hastyRefusals = isHasty ? m_hastyRefusals + 1 : 0;
}

void LocationQuestions::granted()
{
    m_hastyRefusals = 0;
}

} // namespace moorline
