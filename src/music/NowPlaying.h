#pragma once

#include "platform/MediaPlayers.h"

#include <QDateTime>

namespace moorline {

/// What plays, as of one poll.
struct NowPlaying {
    /// Absent: nothing plays anywhere.
    std::optional<MusicSource> source;
    bool isPlaying = false;
    /// Each may be empty.
    QString title;
    QString artist;
    QString album;
    QString trackId;
    /// In seconds into the track, at the moment of the poll.
    double position = 0;
    /// In seconds; 0 when unknown.
    double duration = 0;
    std::optional<QUrl> artworkUrl;
    /// When it was polled; no valid time for nothing.
    QDateTime updatedAt;
    /// Whether the player obeys each command.
    bool canPlayPause = true;
    bool canGoNext = true;
    bool canGoPrevious = true;

    bool operator==(const NowPlaying &) const = default;

    /// Whether there is a track to show.
    [[nodiscard]] bool hasTrack() const { return source && !title.isEmpty(); }
    /// Whether its player obeys this command. Nobody does while nothing plays.
    [[nodiscard]] bool obeys(MusicCommand command) const;
    /// How much of the track has passed at `now`, from 0 to 1: it runs on while it plays. 0 when that is not known.
    [[nodiscard]] double progress(const QDateTime &now) const;

    /// The record of a source that was polled at `now`.
    [[nodiscard]] static NowPlaying of(MusicSource source, const PlayerReport &report, const QDateTime &now);
    /// The record while nothing plays anywhere.
    [[nodiscard]] static NowPlaying nothing() { return {}; }
};

} // namespace moorline
