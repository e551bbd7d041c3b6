#pragma once

#include <chrono>
#include <optional>

namespace moorline {

/// When permission to use the location may be asked for without the user's wish, on systems that ask anew each time.
/// Every question may put a window on the screen, so one that was left open, or that somebody answered with a no, has
/// time. But a no that came faster than anybody reads was no decision: nobody was there yet to decide, as while a
/// session starts. In time since the start of the program.
class LocationQuestions final {
public:
    using Time = std::chrono::milliseconds;

    /// Nobody reads a question and answers it within this.
    static constexpr std::chrono::seconds shortestDecision{2};
    /// From a question that nobody decided to the next.
    static constexpr std::chrono::seconds retryDelay{30};
    /// How many questions may follow for that reason alone.
    static constexpr int mostRetries = 3;
    /// From a question to the next in any other case.
    static constexpr std::chrono::hours patience{1};

    [[nodiscard]] bool mayAsk(Time now) const;

    void asked(Time now);
    void refused(Time now);
    void granted();

    /// Whether the refusal that just came is worth another question after the delay, for which nobody has to want a
    /// location again.
    [[nodiscard]] bool isWorthARetry() const { return m_hastyRefusals > 0 && m_hastyRefusals <= mostRetries; }

private:
    std::optional<Time> m_asked;
    /// Running.
    int m_hastyRefusals = 0;
};

} // namespace moorline
