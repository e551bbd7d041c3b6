#include "platform/PanelPointerRule.h"

namespace moorline {

PanelPointerRule::Answer PanelPointerRule::see(const Sight &sight)
{
    Answer answer;
    // A drag that began here keeps the panel until the button comes up, wherever it leads.
    if (sight.isInside || !sight.isPressed)
        answer.letsThrough = !sight.isInside;
    if (sight.isPressed)
        return answer;
    // Whoever was told that the pointer came is told that it went, also by a toolkit that has woken up meanwhile.
    answer.leaves = m_widgetsKnow && !sight.isInside;
    if (!sight.isApplicationActive && sight.isInside) {
        answer.enters = !m_widgetsKnow;
        answer.moves = sight.hasMoved;
    }
    m_widgetsKnow = (m_widgetsKnow || answer.enters) && !answer.leaves;
    return answer;
}

} // namespace moorline
