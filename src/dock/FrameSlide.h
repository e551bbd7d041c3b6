#pragma once

#include "platform/Clock.h"

#include <QRectF>
#include <optional>

namespace moorline {

/// Moves a frame to another place in 0.18 seconds, fast at first and then settling.
class FrameSlide {
public:
    using SetFrame = std::function<void(const QRectF &)>;

    FrameSlide(Clock &clock, SetFrame setFrame);

    /// A slide that is under way goes on from where it is.
    void start(const QRectF &from, const QRectF &to);
    /// Leaves the frame where it is now.
    void stop();
    /// Where the slide under way leads; absent at rest.
    [[nodiscard]] std::optional<QRectF> destination() const;

private:
    void step();

    Clock &m_clock;
    SetFrame m_setFrame;
    QRectF m_from;
    QRectF m_to;
    std::chrono::milliseconds m_startedAt{0};
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
