#include "platform/qt/QtClock.h"

#include <QTimer>

namespace moorline {

namespace {

class RunningTimer final : public Clock::Timer {
public:
    RunningTimer(std::chrono::milliseconds interval, bool repeats, Clock::Callback callback)
    {
        // A coarse timer comes up to a twentieth early or late: a clock would limp, and a limit would pass too soon.
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setSingleShot(!repeats);
        // The callback may destroy this timer, so it runs as a copy.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [callback = std::move(callback)] {
            const Clock::Callback call = callback;
            call();
        });
        m_timer.start(interval);
    }

private:
    QTimer m_timer;
};

} // namespace

QtClock::QtClock()
{
    m_uptime.start();
}

QDateTime QtClock::now() const
{
    return QDateTime::currentDateTime();
}

std::chrono::milliseconds QtClock::uptime() const
{
    return std::chrono::milliseconds(m_uptime.elapsed());
}

std::unique_ptr<Clock::Timer> QtClock::every(std::chrono::milliseconds interval, Callback tick)
{
    return std::make_unique<RunningTimer>(interval, true, std::move(tick));
}

std::unique_ptr<Clock::Timer> QtClock::after(std::chrono::milliseconds delay, Callback fire)
{
    return std::make_unique<RunningTimer>(delay, false, std::move(fire));
}

} // namespace moorline
