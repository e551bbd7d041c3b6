#pragma once

#include <QString>
#include <QUrl>
#include <QVariantMap>
#include <optional>

namespace moorline {

/// What a media player says of what it plays, by the MPRIS D-Bus Interface Specification 2.2
/// (specifications.freedesktop.org/mpris-spec). Whatever is of another type than there, too long or out of range counts
/// as not said.
struct MprisProperties {
    enum class Status { playing, paused, stopped };

    Status status = Status::stopped;
    /// The player's own name for the track. Many have one name for all tracks.
    QString trackId = {};
    /// Where the track comes from.
    QString url = {};
    /// Each may be empty.
    QString title = {};
    QString artist = {};
    QString album = {};
    /// In seconds; 0 when unknown.
    double duration = 0;
    /// A file, a web address, or the picture itself.
    std::optional<QUrl> artwork = std::nullopt;
    /// As it was said, which may be the picture itself; empty where there is none.
    QString artworkText = {};
    bool canPlayPause = true;
    bool canGoNext = true;
    bool canGoPrevious = true;
    /// The process for which it speaks, where that is not its own.
    std::optional<qint64> spokenForProcess = std::nullopt;

    bool operator==(const MprisProperties &) const = default;
};

/// What a media player says of itself.
struct MprisIdentity {
    /// Its name for people; may be empty.
    QString name = {};
    /// The name of its desktop entry, without ".desktop"; may be empty.
    QString desktopEntry = {};
    bool canRaise = false;

    bool operator==(const MprisIdentity &) const = default;
};

/// From the properties of org.mpris.MediaPlayer2.Player, in types of Qt Core: objects' paths as texts, "Metadata" as a
/// QVariantMap. Absent where they do not say whether something plays. `before` is what the player said last: what is
/// large and did not change is not looked into again.
[[nodiscard]] std::optional<MprisProperties> mprisProperties(
    const QVariantMap &player, const std::optional<MprisProperties> &before = std::nullopt);

/// From those of org.mpris.MediaPlayer2.
[[nodiscard]] MprisIdentity mprisIdentity(const QVariantMap &root);

/// Seconds into a track of that duration, which is 0 when unknown, from any number of microseconds. What is no number
/// is the beginning.
[[nodiscard]] double mprisPosition(const QVariant &microseconds, double duration);

/// The title to show: the track's own, else the name of its file, else the player's own name.
[[nodiscard]] QString shownTitle(const MprisProperties &properties, const MprisIdentity &identity);

/// Tells one track from another, of any player. `owner` is the player's unique name on the bus.
[[nodiscard]] QString trackDigest(const QString &owner, const MprisProperties &properties);

} // namespace moorline
