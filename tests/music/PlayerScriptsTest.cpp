#include "music/PlayerScripts.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

/// With a bar where the separator is.
QString readable(QString text)
{
    return text.replace(QChar(0x1f), u'|');
}

constexpr auto artworkExport =
    "tell application \"Music\"\n"
    "    try\n"
    "        if (count of artworks of current track) is 0 then return \"STOPPED\"\n"
    "        set artData to raw data of artwork 1 of current track\n"
    "    on error\n"
    "        return \"STOPPED\"\n"
    "    end try\n"
    "end tell\n"
    "set outFile to open for access POSIX file \"/tmp/a \\\"b\\\" \\\\c\" with write permission\n"
    "set eof outFile to 0\n"
    "write artData to outFile\n"
    "close access outFile\n"
    "return \"OK\"";

} // namespace

/// What players are told, to the letter.
class PlayerScriptsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theQueryOfMusic()
    {
        QCOMPARE(readable(queryScript(MusicSource::music)),
            QStringLiteral(R"(if application "Music" is not running then return "STOPPED"
tell application "Music"
    try
        set curState to player state as string
        set t to current track
        return (curState & "|" & (database id of t) & "|" & (name of t) & "|" & (artist of t) & "|" & (album of t) & "|" & (duration of t) & "|" & (player position) & "|" & "")
    on error
        return "STOPPED"
    end try
end tell)"));
        QCOMPARE(queryScript(MusicSource::music).count(QChar(0x1f)), 7);
    }

    void theQueryOfSpotify()
    {
        QCOMPARE(readable(queryScript(MusicSource::spotify)),
            QStringLiteral(R"(if application "Spotify" is not running then return "STOPPED"
tell application "Spotify"
    try
        set curState to player state as string
        set t to current track
        return (curState & "|" & (id of t) & "|" & (name of t) & "|" & (artist of t) & "|" & (album of t) & "|" & ((duration of t) / 1000) & "|" & (player position) & "|" & (artwork url of t))
    on error
        return "STOPPED"
    end try
end tell)"));
        QCOMPARE(queryScript(MusicSource::spotify).count(QChar(0x1f)), 7);
    }

    void theExportOfArtwork()
    {
        QCOMPARE(artworkScript(QStringLiteral("/tmp/a \"b\" \\c")), QString::fromLatin1(artworkExport));
    }

    void commands_data()
    {
        QTest::addColumn<MusicSource>("source");
        QTest::addColumn<MusicCommand>("command");
        QTest::addColumn<QString>("script");
        const auto row = [](MusicSource source, MusicCommand command, const char *script) {
            QTest::newRow(script) << source << command << QString::fromLatin1(script);
        };
        row(MusicSource::spotify, MusicCommand::playPause, "tell application \"Spotify\" to playpause");
        row(MusicSource::spotify, MusicCommand::next, "tell application \"Spotify\" to next track");
        row(MusicSource::spotify, MusicCommand::previous, "tell application \"Spotify\" to previous track");
        row(MusicSource::music, MusicCommand::playPause, "tell application \"Music\" to playpause");
        row(MusicSource::music, MusicCommand::next, "tell application \"Music\" to next track");
        row(MusicSource::music, MusicCommand::previous, "tell application \"Music\" to previous track");
    }

    void commands()
    {
        QFETCH(const MusicSource, source);
        QFETCH(const MusicCommand, command);
        QFETCH(const QString, script);
        QCOMPARE(commandScript(source, command), script);
    }

    void theSystemKnowsThemBy()
    {
        QCOMPARE(bundleIdentifier(MusicSource::spotify), QStringLiteral("com.spotify.client"));
        QCOMPARE(bundleIdentifier(MusicSource::music), QStringLiteral("com.apple.Music"));
    }
};

MOORLINE_TEST(PlayerScriptsTest);
#include "PlayerScriptsTest.moc"
