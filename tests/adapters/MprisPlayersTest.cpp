#include "MprisTestCase.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

/// Who is there, which of them counts, and what is told of it.
class MprisPlayersTest final : public MprisTestCase {
    Q_OBJECT
private Q_SLOTS:
    void whatAPlayerSaysIsReported()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.setTrack(QStringLiteral("xesam:artist"), QStringList{QStringLiteral("A"), QStringLiteral("B")});
        player.setTrack(QStringLiteral("xesam:album"), QStringLiteral("An album"));
        player.setTrack(QStringLiteral("mpris:length"), qint64(90'000'000));
        player.setTrack(QStringLiteral("mpris:artUrl"), QStringLiteral("file:///tmp/cover.png"));
        player.player.insert(QStringLiteral("CanGoPrevious"), false);
        player.position = qint64(12'500'000);
        begin();
        const auto told = report();
        QVERIFY(told);
        QCOMPARE(told->trackId.size(), 64);
        const PlayerReport expected{.isPlaying = true,
            .trackId = told->trackId,
            .title = QStringLiteral("A song"),
            .artist = QStringLiteral("A, B"),
            .album = QStringLiteral("An album"),
            .duration = 90,
            .position = 12.5,
            .artwork = QUrl(QStringLiteral("file:///tmp/cover.png")),
            .canPlayPause = true,
            .canGoNext = true,
            .canGoPrevious = false};
        QCOMPARE(told, std::optional(expected));
    }

    void withoutPlayersThereIsNobodyToAsk()
    {
        begin();
        QVERIFY(!m_players->isRunning(MusicSource::spotify));
        QVERIFY(!m_players->isRunning(MusicSource::music));
        QVERIFY(!report());
        QCOMPARE(m_changes->size(), 0);
    }

    void aPlayerThatComesIsTold()
    {
        begin();
        addKnown(QStringLiteral("one"));
        QVERIFY(m_players->isRunning(MusicSource::music));
        QVERIFY(!m_changes->isEmpty());
        QCOMPARE(shown(), QStringLiteral("A song"));
    }

    void aPlayerThatGoesIsTold()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        m_changes->clear();
        player.quit();
        settle();
        QCOMPARE(m_changes->size(), 1);
        QVERIFY(!m_players->isRunning(MusicSource::music));
        QVERIFY(!report());
    }

    void whoComesAndGoesElsewhereOnTheBusIsNotTold()
    {
        begin();
        MprisDouble other(m_daemon->address(), QStringLiteral("one"));
        settle();
        m_changes->clear();
        QVERIFY(QDBusConnection(m_bus->connection()).registerService(QStringLiteral("org.mpris.MediaPlayer3.two")));
        QVERIFY(QDBusConnection(m_bus->connection()).registerService(QStringLiteral("org.mpris.MediaPlayer2x.two")));
        settle();
        QCOMPARE(m_changes->size(), 0);
    }

    void aSecondNameIsNoSecondPlayer()
    {
        begin();
        MprisDouble &player = addKnown(QStringLiteral("one"));
        QVERIFY(player.takeName(QStringLiteral("one.instance42")));
        settle();
        QCOMPARE(player.count(getAll), 1);
    }

    void spotifyIsExactlyThatName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isSpotify");
        QTest::newRow("itself") << QStringLiteral("spotify") << true;
        QTest::newRow("another instance") << QStringLiteral("spotify.instance42") << true;
        QTest::newRow("the daemon") << QStringLiteral("spotifyd") << false;
        QTest::newRow("the daemon's instance") << QStringLiteral("spotifyd.instance42") << false;
    }
    void spotifyIsExactlyThatName()
    {
        QFETCH(const QString, name);
        QFETCH(const bool, isSpotify);
        add(name);
        begin();
        QCOMPARE(m_players->isRunning(MusicSource::spotify), isSpotify);
        QCOMPARE(m_players->isRunning(MusicSource::music), !isSpotify);
        QCOMPARE(report(MusicSource::spotify).has_value(), isSpotify);
        QCOMPARE(report(MusicSource::music).has_value(), !isSpotify);
    }

    void whoRepeatsOthersIsLeftAlone()
    {
        const MprisDouble &player = add(QStringLiteral("playerctld"));
        begin();
        QVERIFY(!m_players->isRunning(MusicSource::music));
        QVERIFY(!report());
        QCOMPARE(player.calls(), QStringList());
    }

    void aBrowserIsSilentWhileItsTabsAreSpokenFor()
    {
        MprisDouble &browser = add(QStringLiteral("firefox.instance_1_84"));
        browser.setTrack(title, QStringLiteral("A tab"));
        MprisDouble &integration = add(QStringLiteral("plasma-browser-integration"));
        integration.setTrack(title, QStringLiteral("A tab, better told"));
        integration.setTrack(QStringLiteral("kde:pid"), qint32(QCoreApplication::applicationPid()));
        begin();
        browser.start();
        gather();
        QCOMPARE(shown(), QStringLiteral("A tab, better told"));

        integration.setTrack(title, QString());
        integration.tellChange(metadata);
        integration.pause();
        gather();
        QCOMPARE(shown(), QStringLiteral("A tab"));
    }

    void aBrowserThatIsSpokenForAloneIsNotRunning()
    {
        add(QStringLiteral("chromium.instance42"));
        MprisDouble &integration = add(QStringLiteral("plasma-browser-integration"));
        integration.setTrack(QStringLiteral("kde:pid"), quint32(QCoreApplication::applicationPid()));
        integration.player.insert(QStringLiteral("PlaybackStatus"), QStringLiteral("Stopped"));
        begin();
        QVERIFY(!report());
        QVERIFY(m_players->isRunning(MusicSource::music));
        integration.quit();
        settle();
        QCOMPARE(shown(), QStringLiteral("A song"));
    }

    void thereIsNothingOfAPlayerThatStopped()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.setStatus(QStringLiteral("Stopped"));
        player.tellChange(QStringLiteral("PlaybackStatus"));
        gather();
        QVERIFY(!report());
        QVERIFY(m_players->isRunning(MusicSource::music));
    }

    void oneThatPausesIsReportedAsSuch()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.pause();
        gather();
        QVERIFY(report());
        QVERIFY(!report()->isPlaying);
    }

    void ofThoseThatPlayTheLatestToBeginCountsUntilItStops()
    {
        MprisDouble &first = add(QStringLiteral("one"));
        begin();
        MprisDouble &second = addKnown(QStringLiteral("two"));
        second.setTrack(title, QStringLiteral("Another song"));
        second.tellChange(metadata);
        gather();
        QCOMPARE(shown(), QStringLiteral("Another song"));
        // What the other tells meanwhile does not bring it back.
        first.tellChange(metadata);
        gather();
        QCOMPARE(shown(), QStringLiteral("Another song"));
        second.pause();
        gather();
        QCOMPARE(shown(), QStringLiteral("A song"));
        m_clock->advance(1s);
        second.start();
        gather();
        QCOMPARE(shown(), QStringLiteral("Another song"));
    }

    void whenNobodyPlaysTheLastThatDidCounts()
    {
        MprisDouble &first = add(QStringLiteral("one"));
        begin();
        MprisDouble &second = addKnown(QStringLiteral("two"));
        second.setTrack(title, QStringLiteral("Another song"));
        second.pause();
        gather();
        QCOMPARE(shown(), QStringLiteral("A song"));
        first.pause();
        gather();
        QCOMPARE(shown(), QStringLiteral("A song"));
        second.start();
        gather();
        second.pause();
        gather();
        QCOMPARE(shown(), QStringLiteral("Another song"));
    }

    void oneNameForAllTracksIsNoHindrance()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        const QString first = report()->trackId;
        QCOMPARE(report()->trackId, first);
        player.setTrack(title, QStringLiteral("The next song"));
        player.tellChange(metadata);
        gather();
        QVERIFY(report()->trackId != first);
    }

    void aTrackWithoutATitleIsCalledByItsFileElseByItsPlayer()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.setTrack(title, QString());
        begin();
        QCOMPARE(shown(), QStringLiteral("A player"));
        player.setTrack(QStringLiteral("xesam:url"), QStringLiteral("file:///music/a%20file.mp3"));
        player.tellChange(metadata);
        gather();
        QCOMPARE(shown(), QStringLiteral("a file.mp3"));
    }

    void thePositionIsReadEachTime()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.position = qint64(1'000'000);
        QCOMPARE(report()->position, 1.0);
        player.position = qint64(2'000'000);
        QCOMPARE(report()->position, 2.0);
        QCOMPARE(player.count(getPosition), 2);
        QCOMPARE(player.count(getAll), 1);
    }

    void artworkIsNotExported()
    {
        add(QStringLiteral("one"));
        begin();
        const Answer<std::optional<QUrl>> exported(m_players->exportArtwork(MusicSource::music, QStringLiteral("1")));
        QVERIFY(exported.isThere());
        QVERIFY(!exported.value());
    }

    void aBusThatComesAgainHasItsPlayers()
    {
        add(QStringLiteral("one"));
        begin();
        QCOMPARE(shown(), QStringLiteral("A song"));
        m_doubles.clear();
        m_changes->clear();
        m_daemon->end();
        QTRY_VERIFY(!m_bus->isOpen());
        QCOMPARE(m_changes->size(), 1);
        QVERIFY(!m_players->isRunning(MusicSource::music));
        leaveBus();
        QVERIFY(m_daemon->start());
        MprisDouble &player = add(QStringLiteral("two"));
        player.setTrack(title, QStringLiteral("Another song"));
        openBus();
        settle();
        QCOMPARE(shown(), QStringLiteral("Another song"));
    }
};

MOORLINE_TEST(MprisPlayersTest);

#include "MprisPlayersTest.moc"
