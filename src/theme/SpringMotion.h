#pragma once

#include "platform/Clock.h"
#include "theme/Spring.h"

namespace moorline {

/// A value that a spring takes to where it is sent. Sent elsewhere on its way, it keeps its speed.
class SpringMotion {
public:
    /// The value is another one.
    using Moved = std::function<void()>;

    SpringMotion(Clock &clock, Spring spring, double value, Moved moved);

    [[nodiscard]] double value() const { return m_value; }
    /// Where it is on its way to, or rests.
    [[nodiscard]] double target() const { return m_target; }
    [[nodiscard]] bool isMoving() const { return bool(m_timer); }

    void moveTo(double target);
    /// Puts it there at once.
    void jumpTo(double value);

private:
    /// Per second.
    [[nodiscard]] double velocity() const;
    [[nodiscard]] double elapsedSeconds() const;
    [[nodiscard]] double valueAt(double seconds) const;
    void step();

    Clock &m_clock;
    Spring m_spring;
    Moved m_moved;
    double m_value;
    double m_from;
    double m_target;
    /// In units of the distance per second.
    double m_initialVelocity = 0;
    std::chrono::milliseconds m_startedAt{0};
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
