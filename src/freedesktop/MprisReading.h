#pragma once

#include <chrono>
#include <optional>

namespace moorline {

/// When a media player is asked for what it says. Every `uptime` is one since an arbitrary start.
class MprisReading final {
public:
    /// What a player tells within this is one change: some players tell of every step. One that goes on and on is
    /// listened to less and less often, up to the longest.
    static constexpr std::chrono::milliseconds gatheringTime{50};
    static constexpr std::chrono::milliseconds longestGathering{2000};
    /// How long what it said is taken for true without a further word, as not every player tells of changes: of the one
    /// that is shown, and of all others.
    static constexpr std::chrono::milliseconds shownTrustTime{1000};
    static constexpr std::chrono::milliseconds trustTime{10000};

    explicit MprisReading(std::chrono::milliseconds longest = gatheringTime)
        : m_longest(longest)
    {
    }

    /// Whether to ask at once for what is not known, or was said `trust` ago or longer. Without a `trust` it counts for
    /// ever.
    [[nodiscard]] bool isDue(
        bool isKnown, std::optional<std::chrono::milliseconds> trust, std::chrono::milliseconds uptime) const;
    /// The player tells of a change. Answers how long to gather what else it tells before it is asked; absent when that
    /// is under way, or it is being asked.
    [[nodiscard]] std::optional<std::chrono::milliseconds> noteChange(std::chrono::milliseconds uptime);
    /// What the player said so far counts no more, nor does what it is being asked for.
    void distrust();
    /// The player is being asked.
    void begin(std::chrono::milliseconds uptime);
    /// It answered, or did not in time. Answers how long to gather before it is asked again; absent when it told of no
    /// change meanwhile.
    [[nodiscard]] std::optional<std::chrono::milliseconds> end(std::chrono::milliseconds uptime);

private:
    enum class State { idle, gathering, asking };

    [[nodiscard]] std::chrono::milliseconds gather(std::chrono::milliseconds uptime);

    std::chrono::milliseconds m_longest;
    State m_state = State::idle;
    /// It told of a change while it was being asked, which it may have answered before.
    bool m_hasNews = false;
    /// What it is being asked for counts no more.
    bool m_isOutdated = false;
    /// Absent where it may have changed since.
    std::optional<std::chrono::milliseconds> m_readAt;
    /// When it was asked for what it had told of, and how long that had been gathered.
    std::optional<std::chrono::milliseconds> m_heardAt;
    std::chrono::milliseconds m_patience = gatheringTime;
};

} // namespace moorline
