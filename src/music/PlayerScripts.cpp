#include "music/PlayerScripts.h"

#include "system/AppleScriptText.h"

#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

/// A player in the words of its own scripts.
struct Player {
    QLatin1StringView application;
    QLatin1StringView bundleIdentifier;
    QLatin1StringView trackId;
    QLatin1StringView duration;
    QLatin1StringView artwork;
};

// Spotify tells durations in milliseconds. Music has no address of its artwork, and exports it instead.
constexpr Player spotify{QLatin1StringView("Spotify"), QLatin1StringView("com.spotify.client"),
    QLatin1StringView("id of t"), QLatin1StringView("((duration of t) / 1000)"),
    QLatin1StringView("(artwork url of t)")};
constexpr Player music{QLatin1StringView("Music"), QLatin1StringView("com.apple.Music"),
    QLatin1StringView("database id of t"), QLatin1StringView("(duration of t)"), QLatin1StringView("\"\"")};

const Player &player(MusicSource source)
{
    switch (source) {
    case MusicSource::spotify:
        return spotify;
    case MusicSource::music:
        return music;
    }
    Q_UNREACHABLE();
}

QLatin1StringView verb(MusicCommand command)
{
    switch (command) {
    case MusicCommand::playPause:
        return QLatin1StringView("playpause");
    case MusicCommand::next:
        return QLatin1StringView("next track");
    case MusicCommand::previous:
        return QLatin1StringView("previous track");
    }
    Q_UNREACHABLE();
}

/// What the query returns: one text of all fields.
QString fields(const Player &asked)
{
    const QString separator = QStringLiteral(" & \"") + fieldSeparator + QStringLiteral("\" & ");
    const QStringList expressions{QStringLiteral("curState"), QStringLiteral("(%1)").arg(asked.trackId),
        QStringLiteral("(name of t)"), QStringLiteral("(artist of t)"), QStringLiteral("(album of t)"), asked.duration,
        QStringLiteral("(player position)"), asked.artwork};
    return QStringLiteral("(%1)").arg(expressions.join(separator));
}

/// Blanks are no more than these.
QString trimmed(const QString &text)
{
    const auto isBlank = [](QChar character) { return character == u' ' || character == u'\t'; };
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isBlank).base();
    return QString(first, last - first);
}

/// Scripts print numbers as the user writes them, perhaps with a decimal comma. 0 when it is none.
double number(const QString &field)
{
    const QString text = trimmed(field).replace(u',', u'.');
    const auto isOfANumber = [](QChar character) { return QStringView(u"0123456789.+-eE").contains(character); };
    bool isNumber = std::all_of(text.begin(), text.end(), isOfANumber);
    const double value = isNumber ? text.toDouble(&isNumber) : 0;
    return isNumber && std::isfinite(value) ? value : 0;
}

std::optional<QUrl> address(const QString &field)
{
    const QUrl url(field, QUrl::StrictMode);
    return url.isValid() && !url.isEmpty() ? std::optional(url) : std::nullopt;
}

} // namespace

QString queryScript(MusicSource source)
{
    const Player &asked = player(source);
    return QStringLiteral("if application \"%1\" is not running then return \"STOPPED\"\n"
                          "tell application \"%1\"\n"
                          "    try\n"
                          "        set curState to player state as string\n"
                          "        set t to current track\n"
                          "        return %2\n"
                          "    on error\n"
                          "        return \"STOPPED\"\n"
                          "    end try\n"
                          "end tell")
        .arg(asked.application, fields(asked));
}

QString artworkScript(const QString &path)
{
    return QStringLiteral("tell application \"Music\"\n"
                          "    try\n"
                          "        if (count of artworks of current track) is 0 then return \"STOPPED\"\n"
                          "        set artData to raw data of artwork 1 of current track\n"
                          "    on error\n"
                          "        return \"STOPPED\"\n"
                          "    end try\n"
                          "end tell\n"
                          "set outFile to open for access POSIX file ")
        + appleScriptText(path)
        + QStringLiteral(" with write permission\n"
                         "set eof outFile to 0\n"
                         "write artData to outFile\n"
                         "close access outFile\n"
                         "return \"OK\"");
}

QString commandScript(MusicSource source, MusicCommand command)
{
    return QStringLiteral("tell application \"%1\" to %2").arg(player(source).application, verb(command));
}

std::optional<PlayerReport> parsedReply(const QString &reply)
{
    if (reply == QLatin1StringView("STOPPED"))
        return std::nullopt;
    const QStringList parts = reply.split(fieldSeparator);
    if (parts.size() < 8)
        return std::nullopt;
    return PlayerReport{.isPlaying = parts[0].toLower() == QLatin1StringView("playing"),
        .trackId = parts[1],
        .title = parts[2],
        .artist = parts[3],
        .album = parts[4],
        .duration = number(parts[5]),
        .position = number(parts[6]),
        .artwork = address(parts[7])};
}

QString bundleIdentifier(MusicSource source)
{
    return player(source).bundleIdentifier;
}

} // namespace moorline
