#include "music/NowPlayingService.h"

#include "MusicFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

constexpr auto spotify = MusicSource::spotify;
constexpr auto music = MusicSource::music;
const PlayerReport one = MusicFixture::track(QStringLiteral("One"));
const PlayerReport two = MusicFixture::track(QStringLiteral("Two"));

} // namespace

/// What is asked when, and who wins.
class NowPlayingServiceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void isSilentBeforeItsStart()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.players.change();
        fixture.clock.advance(1min);
        QVERIFY(fixture.players.queried.isEmpty());
        QCOMPARE(fixture.current(), NowPlaying::nothing());
        QVERIFY(!fixture.service->lastPlaybackAt());
    }

    void asksAtOnceAndEveryTwoSeconds()
    {
        MusicFixture fixture;
        fixture.players.say(music, one);
        fixture.service->start();
        QCOMPARE(fixture.takeQueried(), QList{music});
        QCOMPARE(fixture.current().title, QStringLiteral("One"));
        fixture.clock.advance(1999ms);
        QVERIFY(fixture.takeQueried().isEmpty());
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.takeQueried(), QList{music});
        fixture.clock.advance(6s);
        QCOMPARE(fixture.takeQueried(), (QList{music, music, music}));
        QCOMPARE(fixture.current().updatedAt, fixture.clock.now());
    }

    void neverAsksAPlayerThatDoesNotRun()
    {
        MusicFixture fixture;
        fixture.players.reports[spotify] = one;
        fixture.players.reports[music] = two;
        fixture.service->start();
        fixture.clock.advance(1min);
        QVERIFY(fixture.players.queried.isEmpty());
        QCOMPARE(fixture.current(), NowPlaying::nothing());
    }

    void whenBothPlaySpotifyIsShownAndMusicIsNotAsked()
    {
        MusicFixture fixture;
        fixture.players.say(music, two);
        fixture.players.say(spotify, one);
        fixture.service->start();
        QCOMPARE(fixture.takeQueried(), QList{spotify});
        QCOMPARE(fixture.current().source, std::optional(spotify));
        QCOMPARE(fixture.current().title, QStringLiteral("One"));
        QVERIFY(fixture.current().isPlaying);
    }

    void musicThatPlaysWinsOverAPausedSpotify()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, MusicFixture::paused(one));
        fixture.players.say(music, two);
        fixture.service->start();
        QCOMPARE(fixture.takeQueried(), (QList{spotify, music}));
        QCOMPARE(fixture.current().source, std::optional(music));
        QCOMPARE(fixture.current().title, QStringLiteral("Two"));
    }

    void whenBothArePausedTheFirstWithATitleIsShown()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, MusicFixture::paused(one));
        fixture.players.say(music, MusicFixture::paused(two));
        fixture.service->start();
        QCOMPARE(fixture.takeQueried(), (QList{spotify, music}));
        QCOMPARE(fixture.current().title, QStringLiteral("One"));
        QVERIFY(!fixture.current().isPlaying);
        fixture.players.reports[spotify].title.clear();
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current().title, QStringLiteral("Two"));
        fixture.players.reports[music].title.clear();
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current(), NowPlaying::nothing());
    }

    void aTrackThatPlaysNeedsNoTitle()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.players.reports[spotify].title.clear();
        fixture.service->start();
        QVERIFY(fixture.current().isPlaying && !fixture.current().hasTrack());
    }

    void aPlayerThatSaysNothingDropsOut()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.players.say(music, MusicFixture::paused(two));
        fixture.service->start();
        fixture.players.reports.remove(spotify);
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current().title, QStringLiteral("Two"));
        fixture.players.quit(music);
        fixture.clock.advance(2s);
        QCOMPARE(fixture.current(), NowPlaying::nothing());
        QCOMPARE(fixture.players.running, QSet{spotify});
    }

    void remembersWhenSomethingLastPlayed()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, MusicFixture::paused(one));
        fixture.service->start();
        QVERIFY(!fixture.service->lastPlaybackAt());
        fixture.players.say(spotify, one);
        fixture.clock.advance(2s);
        const QDateTime heard = fixture.clock.now();
        QCOMPARE(fixture.service->lastPlaybackAt(), std::optional(heard));
        fixture.players.say(spotify, MusicFixture::paused(one));
        fixture.clock.advance(1h);
        QCOMPARE(fixture.service->lastPlaybackAt(), std::optional(heard));
        fixture.players.quit(spotify);
        fixture.clock.advance(2s);
        QCOMPARE(fixture.service->lastPlaybackAt(), std::optional(heard));
    }

    void aSlowPlayerIsNotAskedAgainMeanwhile()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.players.isSlow = true;
        fixture.service->start();
        fixture.clock.advance(1min);
        QCOMPARE(fixture.takeQueried(), QList{spotify});
        QVERIFY(fixture.players.answer(one));
        QCOMPARE(fixture.current().title, QStringLiteral("One"));
        // A tick that was missed is not made up for.
        QVERIFY(fixture.takeQueried().isEmpty());
        fixture.clock.advance(2s);
        QCOMPARE(fixture.takeQueried(), QList{spotify});
        QVERIFY(fixture.players.answer(std::nullopt));
        QCOMPARE(fixture.current(), NowPlaying::nothing());
    }

    void aChangeIsAskedForAtOnce()
    {
        MusicFixture fixture;
        fixture.service->start();
        fixture.clock.advance(100ms);
        fixture.players.say(music, one);
        fixture.players.change();
        QCOMPARE(fixture.current().title, QStringLiteral("One"));
        fixture.players.quit(music);
        fixture.players.change();
        QCOMPARE(fixture.current(), NowPlaying::nothing());
    }

    void changesDuringAPollMakeOneMore()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.players.isSlow = true;
        fixture.service->start();
        for (int i = 0; i < 1000; ++i)
            fixture.players.change();
        QCOMPARE(fixture.takeQueried(), QList{spotify});
        QVERIFY(fixture.players.answer(one));
        QCOMPARE(fixture.takeQueried(), QList{spotify});
        QVERIFY(fixture.players.answer(two));
        QCOMPARE(fixture.current().title, QStringLiteral("Two"));
        QCOMPARE(fixture.players.waiting(), 0);
    }

    void tellsOfRealNewsOnly()
    {
        MusicFixture fixture;
        QSignalSpy changes(fixture.service.get(), &NowPlayingService::currentChanged);
        fixture.service->start();
        fixture.clock.advance(10s);
        QCOMPARE(changes.size(), 0);
        fixture.players.say(spotify, MusicFixture::paused(one));
        fixture.clock.advance(10s);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(fixture.current().updatedAt, fixture.clock.now());
        fixture.players.reports[spotify].canGoNext = false;
        fixture.clock.advance(10s);
        QCOMPARE(changes.size(), 2);
        fixture.players.quit(spotify);
        fixture.clock.advance(10s);
        QCOMPARE(changes.size(), 3);
    }

    void aPositionIsTakenAsItIsTold()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, MusicFixture::at(one, 50));
        fixture.service->start();
        QCOMPARE(fixture.current().position, 50.0);
        fixture.clock.advance(10s);
        QCOMPARE(fixture.current().position, 50.0);
        QCOMPARE(fixture.current().progress(fixture.clock.now()), 0.25);
    }

    void mayEndDuringAPoll()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, MusicFixture::paused(one));
        fixture.players.say(music, two);
        fixture.players.isSlow = true;
        fixture.service->start();
        fixture.service.reset();
        QVERIFY(fixture.players.answer(MusicFixture::paused(one)));
        fixture.clock.advance(1min);
        QCOMPARE(fixture.players.queried, QList{spotify});
    }

    void mayEndWhenItTellsOfNews()
    {
        MusicFixture fixture;
        connect(fixture.service.get(), &NowPlayingService::currentChanged, this,
            [&fixture] { delete fixture.service.release(); });
        fixture.players.say(spotify, one);
        fixture.service->start();
        QVERIFY(!fixture.service);
        fixture.clock.advance(1min);
        QCOMPARE(fixture.players.queried, QList{spotify});
    }
};

MOORLINE_TEST(NowPlayingServiceTest);
#include "NowPlayingServiceTest.moc"
