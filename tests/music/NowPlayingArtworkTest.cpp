#include "MusicFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

using Url = std::optional<QUrl>;

constexpr auto spotify = MusicSource::spotify;
constexpr auto music = MusicSource::music;
const QUrl file(QStringLiteral("file:///tmp/one.dat"));
const QUrl address(QStringLiteral("https://example.org/one.jpg"));

PlayerReport one(const Url &artwork = std::nullopt)
{
    PlayerReport report = MusicFixture::track(QStringLiteral("One"));
    report.artwork = artwork;
    return report;
}

} // namespace

/// Where the artwork of what plays is, and how long that is remembered.
class NowPlayingArtworkTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void musicExportsItOnceForATrack()
    {
        MusicFixture fixture;
        fixture.players.say(music, one());
        fixture.players.artwork[QStringLiteral("id of One")] = file;
        fixture.service->start();
        QCOMPARE(fixture.current().artworkUrl, Url(file));
        QCOMPARE(fixture.players.exported.size(), 1);
        QCOMPARE(fixture.players.exported.first().first, music);
        QCOMPARE(fixture.players.exported.first().second, QStringLiteral("id of One"));
        fixture.clock.advance(10s);
        QCOMPARE(fixture.players.exported.size(), 1);
        QCOMPARE(fixture.current().artworkUrl, Url(file));
    }

    void whatCannotBeExportedIsTriedAgainAtTheNextPoll()
    {
        MusicFixture fixture;
        fixture.players.say(music, one());
        fixture.service->start();
        QCOMPARE(fixture.current().artworkUrl, Url());
        fixture.clock.advance(4s);
        QCOMPARE(fixture.players.exported.size(), 3);
        fixture.players.artwork[QStringLiteral("id of One")] = file;
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current().artworkUrl, Url(file));
    }

    void aTrackWithoutANameIsNotExported()
    {
        MusicFixture fixture;
        PlayerReport nameless = one();
        nameless.trackId.clear();
        fixture.players.say(music, nameless);
        fixture.players.artwork[QString()] = file;
        fixture.service->start();
        QVERIFY(fixture.players.exported.isEmpty());
        QCOMPARE(fixture.current().artworkUrl, Url());
    }

    void whatMusicTellsItselfIsKeptWhereNothingIsExported()
    {
        MusicFixture fixture;
        fixture.players.say(music, one(address));
        fixture.service->start();
        QCOMPARE(fixture.current().artworkUrl, Url(address));
        // But not for later.
        fixture.players.say(music, one());
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current().artworkUrl, Url());
    }

    void anAddressOfSpotifysIsKeptForItsTrack()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one(address));
        fixture.service->start();
        QCOMPARE(fixture.current().artworkUrl, Url(address));
        fixture.players.say(spotify, one());
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current().artworkUrl, Url(address));
        fixture.players.say(spotify, one(QUrl(QStringLiteral("https://example.org/other.jpg"))));
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current().artworkUrl, Url(address));
        fixture.players.say(spotify, MusicFixture::track(QStringLiteral("Two")));
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current().artworkUrl, Url());
        QVERIFY(fixture.players.exported.isEmpty());
    }

    void whatIsNotOnTheWebIsNotKept()
    {
        MusicFixture fixture;
        const QUrl data(QStringLiteral("data:image/png;base64,AAAA"));
        for (const QUrl &url : {file, data}) {
            fixture.players.say(spotify, one(url));
            fixture.players.change();
            if (url == file)
                fixture.service->start();
            fixture.clock.advance(2s);
            QCOMPARE(fixture.current().artworkUrl, Url(url));
        }
        fixture.players.say(spotify, one());
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current().artworkUrl, Url());
    }

    void tracksWithoutANameDoNotShareOne()
    {
        MusicFixture fixture;
        PlayerReport nameless = one(address);
        nameless.trackId.clear();
        fixture.players.say(spotify, nameless);
        fixture.service->start();
        nameless.artwork = QUrl(QStringLiteral("https://example.org/other.jpg"));
        fixture.players.say(spotify, nameless);
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current().artworkUrl, nameless.artwork);
    }

    void aPausedTrackTakesWhatIsKnownAndExportsNothing()
    {
        MusicFixture fixture;
        fixture.players.say(music, MusicFixture::paused(one()));
        fixture.players.artwork[QStringLiteral("id of One")] = file;
        fixture.service->start();
        QVERIFY(fixture.players.exported.isEmpty());
        QCOMPARE(fixture.current().artworkUrl, Url());
        fixture.players.say(music, one());
        fixture.clock.advance(2s);
        fixture.players.say(music, MusicFixture::paused(one()));
        fixture.clock.advance(2s);
        QVERIFY(!fixture.current().isPlaying);
        QCOMPARE(fixture.current().artworkUrl, Url(file));
        QCOMPARE(fixture.players.exported.size(), 1);
    }

    void aPausedTrackKeepsItsOwn()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, MusicFixture::paused(one(address)));
        fixture.service->start();
        QCOMPARE(fixture.current().artworkUrl, Url(address));
    }

    void theMomentIsThatOfTheQuestion()
    {
        MusicFixture fixture;
        fixture.players.say(music, MusicFixture::at(one(), 50));
        fixture.players.isSlowToExport = true;
        const QDateTime asked = fixture.clock.now();
        fixture.service->start();
        QCOMPARE(fixture.service->lastPlaybackAt(), std::optional(asked));
        fixture.clock.advance(5s);
        QCOMPARE(fixture.current(), NowPlaying::nothing());
        QVERIFY(fixture.players.answerExport(file));
        QCOMPARE(fixture.current().updatedAt, asked);
        QCOMPARE(fixture.current().position, 50.0);
        QCOMPARE(fixture.current().progress(fixture.clock.now()), 0.275);
    }

    void mayEndDuringAnExport()
    {
        MusicFixture fixture;
        fixture.players.say(music, one());
        fixture.players.isSlowToExport = true;
        fixture.service->start();
        fixture.service.reset();
        QVERIFY(fixture.players.answerExport(file));
    }
};

MOORLINE_TEST(NowPlayingArtworkTest);
#include "NowPlayingArtworkTest.moc"
