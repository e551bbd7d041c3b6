#include "chrome/DragOffWatcher.h"

#include "platform/Pointer.h"

#include <utility>

namespace moorline {

namespace {

constexpr std::chrono::milliseconds interval{80};
/// How far from the panel something still counts as let go on the bar, in points.
constexpr qreal reach = 60;

} // namespace

DragOffWatcher::DragOffWatcher(Clock &clock, const Pointer &pointer, PanelFrame panelFrame)
    : m_clock(clock)
    , m_pointer(pointer)
    , m_panelFrame(std::move(panelFrame))
{
}

void DragOffWatcher::begin(OnEnd onEnd)
{
    m_onEnd = std::move(onEnd);
    m_timer = m_clock.every(interval, [this] { look(); });
}

void DragOffWatcher::stop()
{
    m_timer.reset();
    m_onEnd = nullptr;
}

void DragOffWatcher::look()
{
    if (m_pointer.pressedButtons() != Qt::NoButton)
        return;
    m_timer.reset();
    // Whoever hears of it may begin anew, or destroy the watcher.
    const OnEnd onEnd = std::exchange(m_onEnd, nullptr);
    onEnd(isPointerOff());
}

bool DragOffWatcher::isPointerOff() const
{
    const auto frame = m_panelFrame();
    return frame && !frame->marginsAdded({reach, reach, reach, reach}).contains(m_pointer.location());
}

} // namespace moorline
