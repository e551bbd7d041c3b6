#pragma once

#include "freedesktop/MprisProperties.h"

namespace moorline::test {

/// What a sound player says of its track.
inline QVariantMap metadata()
{
    return {{QStringLiteral("mpris:trackid"), QStringLiteral("/track/1")},
        {QStringLiteral("mpris:length"), qint64(245'500'000)},
        {QStringLiteral("mpris:artUrl"), QStringLiteral("file:///tmp/a%20cover.png")},
        {QStringLiteral("xesam:url"), QStringLiteral("file:///music/A%20song.flac")},
        {QStringLiteral("xesam:title"), QStringLiteral("A song")},
        {QStringLiteral("xesam:artist"), QStringList{QStringLiteral("One"), QStringLiteral("Two")}},
        {QStringLiteral("xesam:album"), QStringLiteral("An album")}};
}

inline QVariantMap player(const QVariantMap &track = metadata())
{
    return {{QStringLiteral("PlaybackStatus"), QStringLiteral("Playing")}, {QStringLiteral("Metadata"), track}};
}

/// What a player says with one thing in its track said otherwise. Nothing is said of it where the value is not valid.
inline MprisProperties withTrack(const QString &key, const QVariant &value)
{
    QVariantMap track = metadata();
    track.remove(key);
    if (value.isValid())
        track.insert(key, value);
    return mprisProperties(player(track)).value();
}

inline MprisProperties withPlayer(const QVariantMap &said)
{
    QVariantMap all = player();
    all.insert(said);
    return mprisProperties(all).value();
}

/// What a sound player says, as it is read.
inline MprisProperties sound()
{
    return {.status = MprisProperties::Status::playing,
        .trackId = QStringLiteral("/track/1"),
        .url = QStringLiteral("file:///music/A%20song.flac"),
        .title = QStringLiteral("A song"),
        .artist = QStringLiteral("One, Two"),
        .album = QStringLiteral("An album"),
        .duration = 245.5,
        .artwork = QUrl(QStringLiteral("file:///tmp/a%20cover.png")),
        .artworkText = QStringLiteral("file:///tmp/a%20cover.png")};
}

} // namespace moorline::test
