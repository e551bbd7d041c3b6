#include "dock/FrameSlide.h"

#include <QEasingCurve>

namespace moorline {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds duration{180};
/// Sixty steps a second.
constexpr milliseconds stepInterval{16};

/// The system's standard ease-out: a cubic Bézier curve with these two control points.
QEasingCurve standardEaseOut()
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
    return curve;
}

double progressAt(milliseconds elapsed)
{
    static const QEasingCurve curve = standardEaseOut();
    return curve.valueForProgress(std::chrono::duration<double>(elapsed) / duration);
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
