#pragma once

#include "platform/MediaPlayers.h"

namespace moorline {

/// Stands between the fields of a reply.
inline constexpr QChar fieldSeparator(0x1f);

/// Asks one player, which runs, for what it plays.
[[nodiscard]] QString queryScript(MusicSource source);
/// Has the artwork of the current track of Music written to the file at this path.
[[nodiscard]] QString artworkScript(const QString &path);
[[nodiscard]] QString commandScript(MusicSource source, MusicCommand command);

/// What a player replied to the query; absent when it has no track, or the reply is none.
[[nodiscard]] std::optional<PlayerReport> parsedReply(const QString &reply);

/// Who the system knows a player as.
[[nodiscard]] QString bundleIdentifier(MusicSource source);

} // namespace moorline
