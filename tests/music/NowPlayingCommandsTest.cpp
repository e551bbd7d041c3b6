#include "MusicFixture.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

using Sent = QPair<MusicSource, MusicCommand>;

constexpr auto spotify = MusicSource::spotify;
constexpr auto music = MusicSource::music;
const PlayerReport one = MusicFixture::track(QStringLiteral("One"));

} // namespace

/// What the player is told, and when it is asked what became of it.
class NowPlayingCommandsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void withoutAPlayerNobodyIsTold()
    {
        MusicFixture fixture;
        fixture.service->start();
        for (const auto command : {MusicCommand::playPause, MusicCommand::next, MusicCommand::previous})
            fixture.service->send(command);
        fixture.service->openPlayer();
        fixture.clock.advance(1s);
        QVERIFY(fixture.players.sent.isEmpty());
        QVERIFY(fixture.players.opened.isEmpty());
    }

    void theCurrentPlayerIsTold()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, MusicFixture::paused(one));
        fixture.players.say(music, one);
        fixture.service->start();
        fixture.service->send(MusicCommand::next);
        fixture.service->send(MusicCommand::previous);
        fixture.players.quit(music);
        fixture.clock.advance(2s);
        fixture.service->send(MusicCommand::playPause);
        QCOMPARE(fixture.players.sent,
            (QList<Sent>{
                {music, MusicCommand::next}, {music, MusicCommand::previous}, {spotify, MusicCommand::playPause}}));
    }

    void afterACommandItIsAskedSoon()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.service->start();
        fixture.clock.advance(100ms);
        static_cast<void>(fixture.takeQueried());
        fixture.service->send(MusicCommand::playPause);
        fixture.players.say(spotify, MusicFixture::paused(one));
        fixture.clock.advance(349ms);
        QVERIFY(fixture.takeQueried().isEmpty());
        QVERIFY(fixture.current().isPlaying);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.takeQueried(), QList{spotify});
        QVERIFY(!fixture.current().isPlaying);
        fixture.clock.advance(1550ms);
        QCOMPARE(fixture.takeQueried(), QList{spotify});
    }

    void everyCommandIsFollowedByAQuestion()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.service->start();
        static_cast<void>(fixture.takeQueried());
        fixture.service->send(MusicCommand::next);
        fixture.clock.advance(200ms);
        fixture.service->send(MusicCommand::next);
        fixture.clock.advance(150ms);
        QCOMPARE(fixture.takeQueried().size(), 1);
        fixture.clock.advance(200ms);
        QCOMPARE(fixture.takeQueried().size(), 1);
    }

    void aQuestionAfterACommandThatMeetsAnotherIsDropped()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.service->start();
        fixture.players.isSlow = true;
        fixture.clock.advance(2s);
        static_cast<void>(fixture.takeQueried());
        fixture.service->send(MusicCommand::next);
        fixture.clock.advance(350ms);
        QVERIFY(fixture.takeQueried().isEmpty());
        QVERIFY(fixture.players.answer(one));
        QVERIFY(fixture.takeQueried().isEmpty());
    }

    void whatAPlayerDoesNotObeyItIsNotTold()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.players.reports[spotify].canGoNext = false;
        fixture.service->start();
        static_cast<void>(fixture.takeQueried());
        fixture.service->send(MusicCommand::next);
        QVERIFY(fixture.players.sent.isEmpty());
        fixture.clock.advance(1s);
        QVERIFY(fixture.takeQueried().isEmpty());
        fixture.service->send(MusicCommand::previous);
        QCOMPARE(fixture.players.sent, (QList<Sent>{{spotify, MusicCommand::previous}}));
    }

    void theCurrentPlayerIsOpened()
    {
        MusicFixture fixture;
        fixture.players.say(music, MusicFixture::paused(one));
        fixture.service->start();
        fixture.service->openPlayer();
        QCOMPARE(fixture.players.opened, QList{music});
    }

    void mayEndAfterACommand()
    {
        MusicFixture fixture;
        fixture.players.say(spotify, one);
        fixture.service->start();
        fixture.service->send(MusicCommand::next);
        static_cast<void>(fixture.takeQueried());
        fixture.service.reset();
        fixture.clock.advance(1s);
        QVERIFY(fixture.takeQueried().isEmpty());
    }
};

MOORLINE_TEST(NowPlayingCommandsTest);
#include "NowPlayingCommandsTest.moc"
