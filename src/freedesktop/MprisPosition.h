#pragma once

#include <QString>
#include <chrono>
#include <optional>

namespace moorline {

/// Where the track of a media player really is. Players are known to tell, for as long as a track plays, where it was
/// when it began to: one that tells the same place twice while it plays is not believed, and the track runs on from
/// where it was.
class MprisPosition final {
public:
    /// What the player says.
    struct Told {
        bool isPlaying = false;
        /// Tells one track from another.
        QString track;
        /// In seconds into the track.
        double position = 0;
        /// In seconds; 0 when unknown.
        double duration = 0;
    };

    /// The position of what is told `uptime` after an arbitrary start, in seconds into the track.
    [[nodiscard]] double correct(const Told &told, std::chrono::milliseconds uptime);
    /// The player says that it went there by a leap, which counts also where it tells the same as before.
    void seek(double position, std::chrono::milliseconds uptime);
    /// The player does not answer when it is asked where it is.
    void noteSilence() { m_isSilent = true; }
    /// The player tells of a change, so that it may answer again.
    void noteChange() { m_isSilent = false; }
    /// Whether the player is left to run on, as each question that it does not answer takes its time.
    [[nodiscard]] bool isSilent() const { return m_isSilent; }
    /// What it told last of that track; the beginning before it told anything of it.
    [[nodiscard]] double lastTold(const QString &track) const;

private:
    struct Record {
        Told told;
        /// Where the track was.
        double position;
        std::chrono::milliseconds uptime;
        /// Whether the player was caught telling the same twice.
        bool isStuck;
    };

    /// Whether this is what the player said before, though time has passed.
    [[nodiscard]] bool isDisbelieved(const Told &told) const;
    [[nodiscard]] double runOn(const Told &told, std::chrono::milliseconds uptime) const;

    std::optional<Record> m_last;
    bool m_isSilent = false;
};

/// Whether an answer says that nobody is there, or that nobody answers, rather than what a player says. `errorName` is
/// D-Bus's, and empty where there is no error.
[[nodiscard]] bool isMprisSilence(const QString &errorName);

} // namespace moorline
