#pragma once

#include "platform/Clock.h"

#include <QRectF>
#include <optional>

namespace moorline {

class Pointer;

/// Decides whether what is dragged out of the bar was let go far enough from it to be removed.
class DragOffWatcher {
public:
    /// Where the panel is, in points, origin at the bottom left of the primary screen; absent while there is none.
    using PanelFrame = std::function<std::optional<QRectF>()>;
    /// True when it was let go off the bar.
    using OnEnd = std::function<void(bool)>;

    /// What is lent here outlives the watcher.
    DragOffWatcher(Clock &clock, const Pointer &pointer, PanelFrame panelFrame);

    /// Watches a drag that began just now, and no other any more; calls `onEnd` once, when no button is pressed.
    void begin(OnEnd onEnd);
    /// Nobody wants to know any more.
    void stop();
    [[nodiscard]] bool isWatching() const { return bool(m_timer); }

private:
    void look();
    [[nodiscard]] bool isPointerOff() const;

    Clock &m_clock;
    const Pointer &m_pointer;
    PanelFrame m_panelFrame;
    OnEnd m_onEnd;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
