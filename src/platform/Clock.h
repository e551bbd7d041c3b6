#pragma once

#include <QCoroTask>
#include <QDateTime>
#include <chrono>
#include <functional>
#include <memory>

namespace moorline {

/// The only source of time: what the wall says, what has passed, and timers on the main event loop.
class Clock {
public:
    /// A running timer. Destroying it stops it; no call comes afterwards, not even from within its own callback.
    class Timer {
    public:
        virtual ~Timer() = default;
    };
    using Callback = std::function<void()>;

    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    /// The wall clock in the system's current time zone. It may jump in either direction.
    [[nodiscard]] virtual QDateTime now() const = 0;
    /// Time since an arbitrary start. It never runs backwards and ignores changes of the wall clock.
    [[nodiscard]] virtual std::chrono::milliseconds uptime() const = 0;

    [[nodiscard]] virtual std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Callback tick) = 0;
    [[nodiscard]] virtual std::unique_ptr<Timer> after(std::chrono::milliseconds delay, Callback fire) = 0;

    /// Suspends the calling coroutine. A sleep that is under way when the clock is destroyed never ends.
    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds delay);
};

} // namespace moorline
