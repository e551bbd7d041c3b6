#pragma once

#include "freedesktop/MprisProperties.h"

#include <QList>
#include <QMap>

namespace moorline {

/// What a media player counts as, by its name on the bus.
enum class MprisKind {
    spotify,
    other,
    /// Says only what other players say.
    repeater,
};

/// `name` is a whole one: "org.mpris.MediaPlayer2.vlc".
[[nodiscard]] MprisKind mprisKind(const QString &name);

/// The name that each player is known by, by the owner of its names: many have a second name that ends in "instance"
/// and a number. Those that only repeat others are none.
[[nodiscard]] QMap<QString, QString> mprisNames(const QMap<QString, QString> &ownerOfName);

/// The process of the browser whose tabs a player by that name speaks for, as long as it says of one what plays there.
[[nodiscard]] std::optional<qint64> browserSpokenFor(const QString &name, const MprisProperties &properties);

/// A player, as far as it is a matter of which one counts.
struct MprisCandidate {
    MprisKind kind = MprisKind::other;
    std::optional<qint64> process = std::nullopt;
    /// Absent while it has not said anything that makes sense.
    std::optional<MprisProperties::Status> status = std::nullopt;
    /// See browserSpokenFor().
    std::optional<qint64> browser = std::nullopt;
    /// See MprisTurns.
    quint64 turn = 0;
};

/// Whether the player at that place speaks for itself, and nobody else does.
[[nodiscard]] bool isHeard(const QList<MprisCandidate> &players, qsizetype place);

/// Whether one of a kind is.
[[nodiscard]] bool isAnyHeard(const QList<MprisCandidate> &players, MprisKind kind);

/// The place of the one that counts among the players of a kind: of those that play the latest to begin, else the one
/// that played last. Absent when nothing is in any.
[[nodiscard]] std::optional<qsizetype> bestPlayer(const QList<MprisCandidate> &players, MprisKind kind);

} // namespace moorline
