#include "music/ScriptedMediaPlayers.h"

#include "fakes/FakeApplications.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeFiles.h"
#include "harness/Answer.h"
#include "harness/TestCase.h"
#include "music/NowPlayingService.h"
#include "music/PlayerScripts.h"
#include "system/AppleScriptRunner.h"
#include "system/Programs.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

using Report = std::optional<PlayerReport>;
using Url = std::optional<QUrl>;

constexpr auto spotify = MusicSource::spotify;
constexpr auto music = MusicSource::music;

/// macOS with a program of the test's for its script host.
struct Mac {
    explicit Mac(const QByteArray &script = {})
        : scripts(clock, programs.addRecorder("osascript", script))
    {
    }

    void start(const char *bundleIdentifier)
    {
        workspace.launch(QString::fromLatin1(bundleIdentifier), QStringLiteral("/Applications/Player.app"));
    }
    [[nodiscard]] static QString recordOf(const QString &script) { return QStringLiteral("<-e>\n<%1>\n").arg(script); }
    [[nodiscard]] QString recorded() const { return programs.recorded("osascript"); }

    Programs programs;
    FakeClock clock;
    FakeWorkspace workspace;
    FakeFiles files;
    AppleScriptRunner scripts;
    std::unique_ptr<ScriptedMediaPlayers> players =
        std::make_unique<ScriptedMediaPlayers>(ScriptedMediaPlayers::Context{.scripts = scripts,
            .workspace = workspace,
            .files = files,
            .temporaryFolder = QStringLiteral("/tmp/of me")});
};

/// A script host that replies with these fields.
QByteArray replying(const QByteArray &fields)
{
    return "printf '" + QByteArray(fields).replace('|', "\\037") + "\\n'";
}

} // namespace

class ScriptedMediaPlayersTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void runsWhatTheWorkspaceHasRunning()
    {
        Mac mac;
        QVERIFY(!mac.players->isRunning(spotify) && !mac.players->isRunning(music));
        mac.start("com.spotify.client");
        QVERIFY(mac.players->isRunning(spotify) && !mac.players->isRunning(music));
        mac.start("com.apple.Music");
        QVERIFY(mac.players->isRunning(music));
        mac.workspace.running->first().isTerminated = true;
        QVERIFY(!mac.players->isRunning(spotify));
        mac.workspace.running.reset();
        QVERIFY(!mac.players->isRunning(music));
        QCOMPARE(mac.recorded(), QString());
    }

    void asksByScript_data()
    {
        QTest::addColumn<MusicSource>("source");
        QTest::newRow("Spotify") << spotify;
        QTest::newRow("Music") << music;
    }

    void asksByScript()
    {
        QFETCH(const MusicSource, source);
        Mac mac(replying("playing|42|Title|Artist|Album|200,5|12,5|"));
        const Answer<Report> answer(mac.players->query(source));
        QTRY_VERIFY(answer.isThere());
        const PlayerReport expected{.isPlaying = true,
            .trackId = QStringLiteral("42"),
            .title = QStringLiteral("Title"),
            .artist = QStringLiteral("Artist"),
            .album = QStringLiteral("Album"),
            .duration = 200.5,
            .position = 12.5,
            .artwork = std::nullopt};
        QCOMPARE(answer.value(), Report(expected));
        QCOMPARE(mac.recorded(), Mac::recordOf(queryScript(source)));
    }

    void noReplyIsNoResult_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("stopped") << QByteArray("echo STOPPED");
        QTest::newRow("refused") << replying("playing|42|Title|Artist|Album|200|12|") + "\nexit 1";
        QTest::newRow("nothing") << QByteArray("true");
        QTest::newRow("seven fields") << replying("playing|42|Title|Artist|Album|200|12");
        QTest::newRow("not UTF-8") << replying("playing|42|\\377|Artist|Album|200|12|");
        QTest::newRow("crashed") << QByteArray("kill -SEGV $$");
    }

    void noReplyIsNoResult()
    {
        QFETCH(const QByteArray, script);
        Mac mac(script);
        const Answer<Report> answer(mac.players->query(music));
        QTRY_VERIFY(answer.isThere());
        QCOMPARE(answer.value(), Report());
    }

    void aPlayerHasFourSecondsToReply()
    {
        Mac mac("exec >&- 2>&-; touch \"$home/there\"; exec sleep 60");
        const Answer<Report> answer(mac.players->query(music));
        QTRY_VERIFY(mac.programs.exists("there"));
        QTRY_COMPARE(mac.clock.runningTimers(), 1);
        mac.clock.advance(3999ms);
        QVERIFY(!answer.isThere());
        mac.clock.advance(1ms);
        QCOMPARE(answer.value(), Report());
        QTRY_VERIFY(!Programs::areRunning());
    }

    void musicExportsItsArtwork()
    {
        Mac mac("echo OK");
        const Answer<Url> answer(mac.players->exportArtwork(music, QStringLiteral("42")));
        QTRY_VERIFY(answer.isThere());
        QCOMPARE(answer.value(), Url(QUrl(QStringLiteral("file:///tmp/of me/moorline-artwork-42.dat"))));
        QCOMPARE(mac.recorded(), Mac::recordOf(artworkScript(QStringLiteral("/tmp/of me/moorline-artwork-42.dat"))));
    }

    void spotifyIsNotAskedForIt()
    {
        Mac mac("echo OK");
        const Answer<Url> answer(mac.players->exportArtwork(spotify, QStringLiteral("42")));
        QVERIFY(answer.isThere());
        QCOMPARE(answer.value(), Url());
        QCOMPARE(mac.recorded(), QString());
    }

    void artworkThatWasNotWrittenIsNone_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("stopped") << QByteArray("echo STOPPED");
        QTest::newRow("not quite") << QByteArray("echo OK then");
        QTest::newRow("in small letters") << QByteArray("echo ok");
        QTest::newRow("refused") << QByteArray("echo OK; exit 1");
        QTest::newRow("nothing") << QByteArray("true");
    }

    void artworkThatWasNotWrittenIsNone()
    {
        QFETCH(const QByteArray, script);
        Mac mac(script);
        const Answer<Url> answer(mac.players->exportArtwork(music, QStringLiteral("42")));
        QTRY_VERIFY(answer.isThere());
        QCOMPARE(answer.value(), Url());
    }

    void artworkThatIsNotThereIsNone()
    {
        Mac mac("echo OK");
        mac.files.missing.insert(QStringLiteral("/tmp/of me/moorline-artwork-42.dat"));
        const Answer<Url> answer(mac.players->exportArtwork(music, QStringLiteral("42")));
        QTRY_VERIFY(answer.isThere());
        QCOMPARE(answer.value(), Url());
    }

    void musicHasSixSecondsToExport()
    {
        Mac mac("exec >&- 2>&-; touch \"$home/there\"; exec sleep 60");
        const Answer<Url> answer(mac.players->exportArtwork(music, QStringLiteral("42")));
        QTRY_VERIFY(mac.programs.exists("there"));
        QTRY_COMPARE(mac.clock.runningTimers(), 1);
        mac.clock.advance(5999ms);
        QVERIFY(!answer.isThere());
        mac.clock.advance(1ms);
        QCOMPARE(answer.value(), Url());
        QTRY_VERIFY(!Programs::areRunning());
    }

    void noTrackLeavesTheFolder_data()
    {
        QTest::addColumn<QString>("track");
        QTest::addColumn<QString>("name");
        const auto row = [](const char *track, const char *name) {
            QTest::newRow(track) << QString::fromUtf8(track) << QString::fromLatin1(name);
        };
        row("42", "42");
        row("AZaz09-_", "AZaz09-_");
        row("../../.bashrc", "%2E%2E%2F%2E%2E%2F%2Ebashrc");
        row("a~b.c", "a%7Eb%2Ec");
        row("spotify:track:1", "spotify%3Atrack%3A1");
        row("a\"b\\c", "a%22b%5Cc");
        row("a\nb", "a%0Ab");
        row("50%", "50%25");
        row("\u00e9", "%C3%A9");
        row("", "");
    }

    void noTrackLeavesTheFolder()
    {
        QFETCH(const QString, track);
        QFETCH(const QString, name);
        QCOMPARE(artworkPath(QStringLiteral("/tmp"), track), QStringLiteral("/tmp/moorline-artwork-%1.dat").arg(name));
    }

    void commandsGoToThePlayer()
    {
        Mac mac("sleep 0");
        mac.players->send(music, MusicCommand::next);
        QTRY_VERIFY(!Programs::areRunning() && mac.programs.exists("osascript.log"));
        QCOMPARE(mac.recorded(), Mac::recordOf(QStringLiteral("tell application \"Music\" to next track")));
    }

    void isOpenedWhereItIsInstalled()
    {
        Mac mac;
        mac.players->open(spotify);
        QVERIFY(mac.workspace.openings.isEmpty());
        QCOMPARE(mac.workspace.pathsAsked, QStringList{QStringLiteral("com.spotify.client")});
        mac.workspace.installed[QStringLiteral("com.spotify.client")] = QStringLiteral("/Applications/Spotify.app");
        mac.players->open(spotify);
        QCOMPARE(mac.workspace.openings.size(), 1);
        QCOMPARE(mac.workspace.openings.first().path, QStringLiteral("/Applications/Spotify.app"));
        QVERIFY(mac.workspace.openings.first().files.isEmpty());
        QVERIFY(!mac.workspace.openings.first().opened);
        QCOMPARE(mac.recorded(), QString());
    }

    void aQuestionMayOutliveThePlayers()
    {
        Mac mac("echo OK");
        const Answer<Url> answer(mac.players->exportArtwork(music, QStringLiteral("42")));
        mac.players.reset();
        QTRY_VERIFY(answer.isThere());
        QCOMPARE(answer.value(), Url());
    }

    void theServiceRunsNoScriptWithoutAPlayer()
    {
        Mac mac(replying("playing|42|Title|Artist|Album|200|12|"));
        NowPlayingService service(*mac.players, mac.clock);
        service.start();
        service.send(MusicCommand::playPause);
        mac.clock.advance(10s);
        QCoreApplication::processEvents();
        QVERIFY(!Programs::areRunning());
        QCOMPARE(mac.recorded(), QString());
    }

    void theServiceHearsSpotifyAndDoesNotAskMusic()
    {
        Mac mac(replying("playing|42|Title|Artist|Album|200|12|https://example.org/a.jpg"));
        mac.start("com.apple.Music");
        mac.start("com.spotify.client");
        NowPlayingService service(*mac.players, mac.clock);
        service.start();
        QTRY_COMPARE(service.current().title, QStringLiteral("Title"));
        QCOMPARE(service.current().source, std::optional(spotify));
        QCOMPARE(mac.recorded(), Mac::recordOf(queryScript(spotify)));
    }
};

MOORLINE_TEST(ScriptedMediaPlayersTest);
#include "ScriptedMediaPlayersTest.moc"
