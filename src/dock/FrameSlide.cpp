#include "dock/FrameSlide.h"

#include "theme/Spring.h"

namespace moorline {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds duration{180};
/// Sixty steps a second.
constexpr milliseconds stepInterval{16};
/// At the end of the duration less than half a point of the panel's way is left.
constexpr Spring spring{.response = 0.2, .damping = 1};

double progressAt(milliseconds elapsed)
{
    // Let go at full speed, a critically damped spring eases out from the first step on.
    return spring.valueAt(std::chrono::duration<double>(elapsed).count(), spring.angularFrequency());
}

QRectF between(const QRectF &from, const QRectF &to, double progress)
{
    const auto mix = [progress](qreal a, qreal b) { return a + (b - a) * progress; };
    return {
        mix(from.x(), to.x()), mix(from.y(), to.y()), mix(from.width(), to.width()), mix(from.height(), to.height())};
}

} // namespace

FrameSlide::FrameSlide(Clock &clock, SetFrame setFrame)
    : m_clock(clock)
    , m_setFrame(std::move(setFrame))
{
}

void FrameSlide::start(const QRectF &from, const QRectF &to)
{
    m_from = from;
    m_to = to;
    m_startedAt = m_clock.uptime();
    m_timer = m_clock.every(stepInterval, [this] { step(); });
}

void FrameSlide::stop()
{
    m_timer.reset();
}

std::optional<QRectF> FrameSlide::destination() const
{
    return m_timer ? std::optional(m_to) : std::nullopt;
}

void FrameSlide::step()
{
    const milliseconds elapsed = m_clock.uptime() - m_startedAt;
    if (elapsed >= duration) {
        stop();
        m_setFrame(m_to);
        return;
    }
    m_setFrame(between(m_from, m_to, progressAt(elapsed)));
}

} // namespace moorline
