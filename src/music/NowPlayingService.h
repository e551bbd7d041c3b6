#pragma once

#include "music/NowPlaying.h"
#include "platform/Clock.h"

#include <QCache>

namespace moorline {

/// Knows what the user's music player is doing: asks the players every two seconds, and at once when one tells of a
/// change, and never one that does not run.
class NowPlayingService final : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds pollInterval{2000};
    /// What a player needs to obey, before it is asked what became of it.
    static constexpr std::chrono::milliseconds commandDelay{350};

    /// Both outlive the service.
    NowPlayingService(MediaPlayers &players, Clock &clock, QObject *parent = nullptr);

    /// Asks now, and from here on.
    void start();

    [[nodiscard]] const NowPlaying &current() const { return m_current; }
    /// When a player was last found playing; absent when none ever was.
    [[nodiscard]] const std::optional<QDateTime> &lastPlaybackAt() const { return m_lastPlaybackAt; }

    /// Tells the current player, which may not obey. Nothing happens when there is none, or it says that it does not.
    void send(MusicCommand command);
    /// Brings the current player to the front. Nothing happens when there is none.
    void openPlayer();

Q_SIGNALS:
    /// Another record, also where only its position runs on.
    void currentChanged();

private:
    /// More tracks than anybody hears in a session; a program that makes them up gets no more.
    static constexpr qsizetype rememberedArtwork = 1000;

    /// Does nothing while another poll is under way.
    QCoro::Task<> poll();
    QCoro::Task<> pollAfterCommand();
    void playersChanged();
    void finishPoll();
    [[nodiscard]] QCoro::Task<NowPlaying> ask();
    [[nodiscard]] QCoro::Task<std::optional<NowPlaying>> query(MusicSource source);
    /// With the artwork of a track that plays.
    [[nodiscard]] QCoro::Task<NowPlaying> withArtwork(NowPlaying record);
    /// With the artwork that is known of its track already, if any.
    [[nodiscard]] NowPlaying withKnownArtwork(NowPlaying record) const;
    void keepArtwork(const QString &trackId, const QUrl &url);
    void publish(NowPlaying record);

    MediaPlayers &m_players;
    Clock &m_clock;
    NowPlaying m_current;
    std::optional<QDateTime> m_lastPlaybackAt;
    std::unique_ptr<Clock::Timer> m_timer;
    bool m_isPolling = false;
    /// Whether the poll that is under way may have missed something.
    bool m_isPollStale = false;
    /// By track; an address each, and never one that holds the picture itself.
    QCache<QString, QUrl> m_artworkCache{rememberedArtwork};
};

} // namespace moorline
