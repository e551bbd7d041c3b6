#include "platform/Clock.h"

#include <coroutine>

namespace moorline {

namespace {

class Sleep {
public:
    Sleep(Clock &clock, std::chrono::milliseconds delay)
        : m_clock(clock)
        , m_delay(delay)
    {
    }

    [[nodiscard]] bool await_ready() const noexcept { return m_delay <= std::chrono::milliseconds::zero(); }

    void await_suspend(std::coroutine_handle<> waiting)
    {
        m_timer = m_clock.after(m_delay, [waiting] { waiting.resume(); });
    }

    void await_resume() const noexcept { }

private:
    Clock &m_clock;
    std::chrono::milliseconds m_delay;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace

QCoro::Task<> Clock::sleep(std::chrono::milliseconds delay)
{
    co_await Sleep(*this, delay);
}

} // namespace moorline
