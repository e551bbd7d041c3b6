#pragma once

#include "platform/Clock.h"

#include <array>
#include <optional>

namespace moorline {

/// When something that failed is tried again: a few times, ever later after the first failure of a row, then evenly or
/// not any more.
class RetrySchedule final {
public:
    /// After the first failure of a row.
    static constexpr std::array<std::chrono::seconds, 3> moments{
        std::chrono::seconds(20), std::chrono::seconds(60), std::chrono::seconds(180)};

    /// `clock` outlives the schedule. Absent `thereafter`, nothing comes after the last of the moments.
    RetrySchedule(Clock &clock, Clock::Callback retry, std::optional<std::chrono::seconds> thereafter = std::nullopt);

    /// Whatever failed before does not count any more: it went well, or there is fresh hope.
    void reset();
    /// Another attempt is under way, so none is to begin meanwhile.
    void pause();
    /// That attempt failed. A moment that went by during it is left out.
    void noteFailure();

private:
    /// Both since the first failure.
    [[nodiscard]] std::optional<std::chrono::milliseconds> momentAfter(std::chrono::milliseconds passed) const;

    Clock &m_clock;
    Clock::Callback m_retry;
    std::optional<std::chrono::seconds> m_thereafter;
    /// In the clock's uptime.
    std::optional<std::chrono::milliseconds> m_firstFailure;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
