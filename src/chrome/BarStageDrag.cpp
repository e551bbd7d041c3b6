#include "chrome/BarDrag.h"
#include "chrome/BarPopup.h"
#include "chrome/BarStage.h"

// What is dragged, and what Escape ends.

namespace moorline {

std::unique_ptr<BarDrag> BarStage::beginDrag()
{
    auto drag = std::make_unique<BarDrag>(hold(), m_context.windows, m_context.pointer);
    connect(drag.get(), &QObject::destroyed, this, &BarStage::dragEnded);
    m_drag = drag.get();
    watchEscape();
    return drag;
}

void BarStage::carryFile(QWidget &source, const QPointF &press, CarriedFile file, std::function<void()> ended)
{
    auto end = [drag = std::shared_ptr<BarDrag>(beginDrag()), ended = std::move(ended)]() mutable {
        drag.reset();
        ended();
    };
    m_context.windows.carryFile(source, press, std::move(file), std::move(end));
}

bool BarStage::isDragCancelled() const
{
    return m_drag && m_drag->isCancelled();
}

void BarStage::dragEnded()
{
    watchEscape();
    // Another one may have begun while the first was still ending.
    if (!m_drag)
        deleteClosed();
}

void BarStage::watchEscape()
{
    // What has the keyboard reads it by itself. What has not leaves every other key to whoever has it; Escape would
    // lead to something there, too, that nobody meant.
    const bool isNeeded = m_drag || (m_popup && !m_popup->wantsKeyboard());
    if (!isNeeded)
        m_escape.reset();
    else if (!m_escape)
        m_escape = m_context.windows.watchEscape([this] { escapePressed(); });
}

void BarStage::escapePressed()
{
    if (m_drag)
        m_drag->cancel();
    else
        close();
}

} // namespace moorline
