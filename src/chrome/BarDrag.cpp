#include "chrome/BarDrag.h"

#include "platform/Pointer.h"
#include "platform/PopupWindows.h"

namespace moorline {

BarDrag::BarDrag(BarHolds::Token hold, PopupWindows &windows, const Pointer &pointer)
    : m_hold(std::move(hold))
    , m_windows(windows)
    , m_pointer(pointer)
{
}

void BarDrag::cancel()
{
    if (std::exchange(m_isCancelled, true))
        return;
    m_windows.cancelDrag();
    // The drag may go with it.
    Q_EMIT cancelled();
}

bool BarDrag::wasCancelled() const
{
    // Where the system itself ends a drag on Escape, the button that is still held tells of it.
    return m_isCancelled || m_pointer.pressedButtons().testFlag(Qt::LeftButton);
}

} // namespace moorline
