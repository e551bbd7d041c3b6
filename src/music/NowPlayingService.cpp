#include "music/NowPlayingService.h"

#include <QPointer>

namespace moorline {

namespace {

constexpr MusicSource sources[] = {MusicSource::spotify, MusicSource::music};

bool isOnTheWeb(const std::optional<QUrl> &url)
{
    return url && url->scheme().startsWith(QLatin1StringView("http"));
}

/// Whether nothing is told by the one record that the other does not tell, but when it was.
bool sayTheSame(const NowPlaying &one, NowPlaying other)
{
    other.updatedAt = one.updatedAt;
    return one == other;
}

} // namespace

NowPlayingService::NowPlayingService(MediaPlayers &players, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_players(players)
    , m_clock(clock)
{
}

void NowPlayingService::start()
{
    connect(&m_players, &MediaPlayers::changed, this, &NowPlayingService::playersChanged);
    m_timer = m_clock.every(pollInterval, [this] { poll(); });
    poll();
}

void NowPlayingService::playersChanged()
{
    // What a poll that is under way has passed already is asked again after it.
    m_isPollStale = m_isPolling;
    poll();
}

QCoro::Task<> NowPlayingService::poll()
{
    QPointer<NowPlayingService> alive{this};
    if (m_isPolling)
        co_return;
    m_isPolling = true;
    NowPlaying found = co_await ask();
    if (!alive)
        co_return;
    publish(std::move(found));
    // Whoever heard of it may have ended the service.
    if (alive)
        finishPoll();
}

void NowPlayingService::finishPoll()
{
    m_isPolling = false;
    if (std::exchange(m_isPollStale, false))
        poll();
}

// Every task below goes on only while the service lives: once it does not, what it answers is of no interest.
QCoro::Task<NowPlaying> NowPlayingService::ask()
{
    QPointer<NowPlayingService> alive{this};
    std::optional<NowPlaying> fallback;
    for (const MusicSource source : sources) {
        if (!m_players.isRunning(source))
            continue;
        const std::optional<NowPlaying> record = co_await query(source);
        if (!alive)
            co_return NowPlaying::nothing();
        if (record && record->isPlaying) {
            m_lastPlaybackAt = m_clock.now();
            NowPlaying found = *record;
            co_return co_await withArtwork(std::move(found));
        }
        if (record && !fallback && !record->title.isEmpty())
            fallback = record;
    }
    if (fallback)
        co_return withKnownArtwork(*fallback);
    co_return NowPlaying::nothing();
}

QCoro::Task<std::optional<NowPlaying>> NowPlayingService::query(MusicSource source)
{
    QPointer<NowPlayingService> alive{this};
    const std::optional<PlayerReport> report = co_await m_players.query(source);
    if (!alive || !report)
        co_return std::nullopt;
    co_return NowPlaying::of(source, *report, m_clock.now());
}

QCoro::Task<NowPlaying> NowPlayingService::withArtwork(NowPlaying record)
{
    QPointer<NowPlayingService> alive{this};
    if (m_artworkCache.contains(record.trackId))
        co_return withKnownArtwork(std::move(record));
    if (record.source == MusicSource::music && !record.trackId.isEmpty()) {
        const std::optional<QUrl> exported = co_await m_players.exportArtwork(MusicSource::music, record.trackId);
        if (!alive)
            co_return NowPlaying::nothing();
        if (exported) {
            keepArtwork(record.trackId, *exported);
            record.artworkUrl = exported;
        }
    } else if (record.source == MusicSource::spotify && isOnTheWeb(record.artworkUrl)) {
        keepArtwork(record.trackId, *record.artworkUrl);
    }
    co_return record;
}

NowPlaying NowPlayingService::withKnownArtwork(NowPlaying record) const
{
    if (const QUrl *known = m_artworkCache.object(record.trackId))
        record.artworkUrl = *known;
    return record;
}

void NowPlayingService::keepArtwork(const QString &trackId, const QUrl &url)
{
    // Tracks without a name of their own would all get the artwork of the first.
    if (!trackId.isEmpty())
        m_artworkCache.insert(trackId, new QUrl(url));
}

void NowPlayingService::publish(NowPlaying record)
{
    const bool isNews = !sayTheSame(m_current, record);
    m_current = std::move(record);
    if (isNews)
        Q_EMIT currentChanged();
}

void NowPlayingService::send(MusicCommand command)
{
    if (!m_current.obeys(command))
        return;
    m_players.send(*m_current.source, command);
    pollAfterCommand();
}

QCoro::Task<> NowPlayingService::pollAfterCommand()
{
    QPointer<NowPlayingService> alive{this};
    co_await m_clock.sleep(commandDelay);
    if (alive)
        poll();
}

void NowPlayingService::openPlayer()
{
    if (m_current.source)
        m_players.open(*m_current.source);
}

} // namespace moorline
