#pragma once

#include "fakes/FakeClock.h"
#include "fakes/FakeMediaPlayers.h"
#include "music/NowPlayingService.h"

namespace moorline::test {

/// The service among players that say what a test has them say.
struct MusicFixture {
    ~MusicFixture()
    {
        service.reset();
        // Whoever still sleeps wakes, finds its owner gone and ends.
        clock.advance(std::chrono::minutes(1));
    }

    /// A track of two hundred seconds that plays, at its beginning.
    [[nodiscard]] static PlayerReport track(const QString &title)
    {
        return {.isPlaying = true,
            .trackId = QStringLiteral("id of ") + title,
            .title = title,
            .artist = QStringLiteral("Artist"),
            .album = QStringLiteral("Album"),
            .duration = 200,
            .position = 0,
            .artwork = std::nullopt};
    }
    [[nodiscard]] static PlayerReport at(PlayerReport report, double position)
    {
        report.position = position;
        return report;
    }
    [[nodiscard]] static PlayerReport paused(PlayerReport report)
    {
        report.isPlaying = false;
        return report;
    }

    [[nodiscard]] const NowPlaying &current() const { return service->current(); }
    /// As many as were asked since the last time.
    [[nodiscard]] QList<MusicSource> takeQueried() { return std::exchange(players.queried, {}); }

    FakeClock clock;
    FakeMediaPlayers players;
    std::unique_ptr<NowPlayingService> service = std::make_unique<NowPlayingService>(players, clock);
};

} // namespace moorline::test
