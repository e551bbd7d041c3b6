#include "freedesktop/MprisChoice.h"

#include <tuple>

namespace moorline {

namespace {

constexpr QLatin1StringView spotify("org.mpris.MediaPlayer2.spotify");
constexpr QLatin1StringView furtherSpotify("org.mpris.MediaPlayer2.spotify.instance");
constexpr QLatin1StringView repeater("org.mpris.MediaPlayer2.playerctld");
constexpr QLatin1StringView browserIntegration("org.mpris.MediaPlayer2.plasma-browser-integration");

/// Larger for the one that counts more.
std::tuple<bool, quint64> rank(const MprisCandidate &player)
{
    return {player.status == MprisProperties::Status::playing, player.turn};
}

} // namespace

MprisKind mprisKind(const QString &name)
{
    if (name == repeater)
        return MprisKind::repeater;
    return name == spotify || name.startsWith(furtherSpotify) ? MprisKind::spotify : MprisKind::other;
}

QMap<QString, QString> mprisNames(const QMap<QString, QString> &ownerOfName)
{
    QMap<QString, QString> names;
    for (auto one = ownerOfName.begin(); one != ownerOfName.end(); ++one) {
        const MprisKind kind = mprisKind(one.key());
        const bool isFirst = !names.contains(*one);
        if (kind == MprisKind::spotify || (kind == MprisKind::other && isFirst))
            names.insert(*one, one.key());
    }
    return names;
}

std::optional<qint64> browserSpokenFor(const QString &name, const MprisProperties &properties)
{
    return name == browserIntegration && !properties.title.isEmpty() ? properties.spokenForProcess : std::nullopt;
}

bool isHeard(const QList<MprisCandidate> &players, qsizetype place)
{
    const MprisCandidate &player = players.at(place);
    if (player.kind == MprisKind::repeater)
        return false;
    for (qsizetype other = 0; other < players.size(); ++other) {
        const auto browser = players.at(other).browser;
        if (other != place && browser && browser == player.process)
            return false;
    }
    return true;
}

bool isAnyHeard(const QList<MprisCandidate> &players, MprisKind kind)
{
    for (qsizetype place = 0; place < players.size(); ++place) {
        if (players.at(place).kind == kind && isHeard(players, place))
            return true;
    }
    return false;
}

std::optional<qsizetype> bestPlayer(const QList<MprisCandidate> &players, MprisKind kind)
{
    std::optional<qsizetype> best;
    for (qsizetype place = 0; place < players.size(); ++place) {
        const MprisCandidate &player = players.at(place);
        const bool hasTrack = player.status && player.status != MprisProperties::Status::stopped;
        if (player.kind != kind || !hasTrack || !isHeard(players, place))
            continue;
        if (!best || rank(player) > rank(players.at(*best)))
            best = place;
    }
    return best;
}

} // namespace moorline
