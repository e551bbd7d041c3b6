#include "platform/linux/players/MprisPlayers.h"

#include "platform/linux/players/PlayerWindows.h"

#include <QPointer>
#include <algorithm>
#include <utility>

namespace moorline {

namespace {

const QString beginning = QStringLiteral("org.mpris.MediaPlayer2");

// The best, and the next best where that one is silent. The one that is silent does not count at the next query.
constexpr int mostAsked = 2;

MprisKind kindOf(MusicSource source)
{
    switch (source) {
    case MusicSource::spotify:
        return MprisKind::spotify;
    case MusicSource::music:
        return MprisKind::other;
    }
    Q_UNREACHABLE();
}

QString methodOf(MusicCommand command)
{
    switch (command) {
    case MusicCommand::playPause:
        return QStringLiteral("PlayPause");
    case MusicCommand::next:
        return QStringLiteral("Next");
    case MusicCommand::previous:
        return QStringLiteral("Previous");
    }
    Q_UNREACHABLE();
}

PlayerReport reportOf(const MprisPlayer &player, double position)
{
    const MprisProperties &properties = *player.properties();
    return {.isPlaying = properties.status == MprisProperties::Status::playing,
        .trackId = trackDigest(player.owner(), properties),
        .title = shownTitle(properties, player.identity()),
        .artist = properties.artist,
        .album = properties.album,
        .duration = properties.duration,
        .position = position,
        .artwork = properties.artwork,
        .canPlayPause = properties.canPlayPause,
        .canGoNext = properties.canGoNext,
        .canGoPrevious = properties.canGoPrevious};
}

} // namespace

MprisPlayers::MprisPlayers(const Context &context)
    : m_context(context)
    , m_names(context.sessionBus, context.clock, beginning)
{
    connect(&m_names, &FollowedNames::ownersChanged, this, &MprisPlayers::follow);
}

MprisPlayers::~MprisPlayers()
{
    // Whoever waits for a player goes on as it ends, and finds none.
    const std::vector<Row> ending = std::exchange(m_rows, {});
}

bool MprisPlayers::isRunning(MusicSource source) const
{
    return isAnyHeard(candidates(), kindOf(source));
}

QCoro::Task<std::optional<PlayerReport>> MprisPlayers::query(MusicSource source)
{
    const QPointer<MprisPlayers> alive(this);
    refresh(source);
    for (int asked = 0; asked < mostAsked; ++asked) {
        const QPointer<MprisPlayer> player(best(source));
        if (!player)
            break;
        const std::optional<double> position = co_await player->position();
        if (!alive)
            co_return std::nullopt;
        // It may have stopped meanwhile.
        if (player && position && player->properties()->status != MprisProperties::Status::stopped) {
            m_reported.insert(source, player->owner());
            co_return reportOf(*player, *position);
        }
    }
    co_return std::nullopt;
}

QCoro::Task<std::optional<QUrl>> MprisPlayers::exportArtwork(MusicSource, QString)
{
    co_return std::nullopt;
}

void MprisPlayers::send(MusicSource source, MusicCommand command)
{
    if (MprisPlayer *player = meant(source))
        player->command(methodOf(command));
}

void MprisPlayers::open(MusicSource source)
{
    if (const MprisPlayer *player = meant(source))
        bringForward(*player, m_context.workspace);
}

void MprisPlayers::follow()
{
    const QMap<QString, QString> names = mprisNames(m_names.owners());
    const bool isOneGone = removeAllBut(names);
    const bool isOneNew = add(names);
    if (isOneGone || isOneNew)
        Q_EMIT changed();
}

bool MprisPlayers::removeAllBut(const QMap<QString, QString> &nameOfOwner)
{
    std::vector<Row> kept;
    std::vector<Row> gone;
    for (Row &row : m_rows) {
        const QString name = nameOfOwner.value(row.player->owner());
        if (name.isEmpty())
            m_turns.forget(row.player->owner());
        else
            row.name = name;
        (name.isEmpty() ? gone : kept).push_back(std::move(row));
    }
    m_rows = std::move(kept);
    return !gone.empty();
}

bool MprisPlayers::add(const QMap<QString, QString> &nameOfOwner)
{
    const size_t before = m_rows.size();
    for (auto one = nameOfOwner.begin(); one != nameOfOwner.end() && m_rows.size() < mostPlayers; ++one) {
        const auto isTheirs = [&one](const Row &row) { return row.player->owner() == one.key(); };
        if (std::any_of(m_rows.begin(), m_rows.end(), isTheirs))
            continue;
        auto player = std::make_unique<MprisPlayer>(m_context.sessionBus, m_context.clock, one.key());
        connect(player.get(), &MprisPlayer::changed, this, [this, told = player.get()] { note(*told); });
        m_rows.push_back({.player = std::move(player), .name = *one});
    }
    return m_rows.size() != before;
}

void MprisPlayers::note(const MprisPlayer &player)
{
    const auto &properties = player.properties();
    m_turns.note(player.owner(), properties ? std::optional(properties->status) : std::nullopt);
    Q_EMIT changed();
}

void MprisPlayers::refresh(MusicSource source) const
{
    const MprisPlayer *shown = best(source);
    for (const Row &row : m_rows) {
        const bool isShown = row.player.get() == shown;
        if (mprisKind(row.name) == kindOf(source))
            row.player->refresh(isShown ? MprisReading::shownTrustTime : MprisReading::trustTime);
    }
}

QList<MprisCandidate> MprisPlayers::candidates() const
{
    QList<MprisCandidate> players;
    for (const Row &row : m_rows) {
        MprisCandidate candidate{
            .kind = mprisKind(row.name), .process = row.player->process(), .turn = m_turns.turnOf(row.player->owner())};
        if (const auto &properties = row.player->properties()) {
            candidate.status = properties->status;
            candidate.browser = browserSpokenFor(row.name, *properties);
        }
        players.append(candidate);
    }
    return players;
}

MprisPlayer *MprisPlayers::best(MusicSource source) const
{
    const auto place = bestPlayer(candidates(), kindOf(source));
    return place ? m_rows.at(size_t(*place)).player.get() : nullptr;
}

MprisPlayer *MprisPlayers::meant(MusicSource source) const
{
    const auto reported = m_reported.constFind(source);
    if (reported == m_reported.constEnd())
        return best(source);
    const auto row = std::find_if(
        m_rows.begin(), m_rows.end(), [&reported](const Row &one) { return one.player->owner() == *reported; });
    return row == m_rows.end() ? nullptr : row->player.get();
}

} // namespace moorline
