#include "chrome/BarHolds.h"

namespace moorline {

BarHolds::Token::~Token()
{
    if (m_holds)
        m_holds->giveBack();
}

BarHolds::Token BarHolds::take()
{
    if (++m_tokens == 1)
        Q_EMIT heldChanged();
    return Token(*this);
}

void BarHolds::giveBack()
{
    if (--m_tokens == 0)
        Q_EMIT heldChanged();
}

} // namespace moorline
