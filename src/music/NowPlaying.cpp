#include "music/NowPlaying.h"

#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

double finite(double seconds)
{
    return std::isfinite(seconds) ? seconds : 0;
}

} // namespace

bool NowPlaying::obeys(MusicCommand command) const
{
    if (!source)
        return false;
    switch (command) {
    case MusicCommand::playPause:
        return canPlayPause;
    case MusicCommand::next:
        return canGoNext;
    case MusicCommand::previous:
        return canGoPrevious;
    }
    Q_UNREACHABLE();
}

double NowPlaying::progress(const QDateTime &now) const
{
    if (duration <= 0)
        return 0;
    double reached = position;
    if (isPlaying) {
        // A clock that was set back does not take the track back.
        const double elapsed = std::max(0.0, double(updatedAt.msecsTo(now)) / 1000);
        reached = std::min(position + elapsed, duration);
    }
    return std::clamp(reached / duration, 0.0, 1.0);
}

NowPlaying NowPlaying::of(MusicSource source, const PlayerReport &report, const QDateTime &now)
{
    return {.source = source,
        .isPlaying = report.isPlaying,
        .title = report.title,
        .artist = report.artist,
        .album = report.album,
        .trackId = report.trackId,
        .position = finite(report.position),
        .duration = finite(report.duration),
        .artworkUrl = report.artwork,
        .updatedAt = now,
        .canPlayPause = report.canPlayPause,
        .canGoNext = report.canGoNext,
        .canGoPrevious = report.canGoPrevious};
}

} // namespace moorline
