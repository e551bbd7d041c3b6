#include "theme/SpringMotion.h"

#include <cmath>

namespace moorline {

namespace {

/// Sixty steps a second.
constexpr std::chrono::milliseconds stepInterval{16};
/// A thousandth of the way is nothing that anyone sees.
constexpr double closeEnough = 0.001;

} // namespace

SpringMotion::SpringMotion(Clock &clock, Spring spring, double value, Moved moved)
    : m_clock(clock)
    , m_spring(spring)
    , m_moved(std::move(moved))
    , m_value(value)
    , m_from(value)
    , m_target(value)
{
}

void SpringMotion::moveTo(double target)
{
    if (target == m_target)
        return;
    const double speed = velocity();
    m_from = m_value;
    m_target = target;
    const double distance = m_target - m_from;
    m_initialVelocity = distance == 0 ? 0 : speed / distance;
    m_startedAt = m_clock.uptime();
    m_timer = m_clock.every(stepInterval, [this] { step(); });
}

void SpringMotion::jumpTo(double value)
{
    m_timer.reset();
    m_from = m_target = value;
    if (value == m_value)
        return;
    m_value = value;
    m_moved();
}

double SpringMotion::elapsedSeconds() const
{
    return std::chrono::duration<double>(m_clock.uptime() - m_startedAt).count();
}

double SpringMotion::valueAt(double seconds) const
{
    return m_from + (m_target - m_from) * m_spring.valueAt(seconds, m_initialVelocity);
}

double SpringMotion::velocity() const
{
    if (!m_timer)
        return 0;
    constexpr double instant = 0.0001;
    const double now = elapsedSeconds();
    return (valueAt(now + instant) - valueAt(now)) / instant;
}

void SpringMotion::step()
{
    const double now = elapsedSeconds();
    if (now >= m_spring.settlingSeconds(closeEnough)) {
        m_timer.reset();
        m_value = m_target;
    } else {
        m_value = valueAt(now);
    }
    m_moved();
}

} // namespace moorline
