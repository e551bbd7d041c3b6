#include "MprisTestCase.h"
#include "music/NowPlayingService.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

/// When a player is asked.
class MprisChangesTest final : public MprisTestCase {
    Q_OBJECT
private Q_SLOTS:
    void aPlayerIsAskedOnceWhenItComes()
    {
        const MprisDouble &player = add(QStringLiteral("one"));
        begin();
        QCOMPARE(player.count(getAll), 1);
        QCOMPARE(player.count(getRoot), 1);
        QCOMPARE(player.count(getPosition), 0);
        // Nothing is left to do without anybody asking.
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void aChangeIsAskedForFiftyMillisecondsLater()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        m_changes->clear();
        player.setTrack(title, QStringLiteral("The next song"));
        player.tellChange(metadata);
        settle();
        m_clock->advance(49ms);
        settle();
        QCOMPARE(player.count(getAll), 1);
        QCOMPARE(m_changes->size(), 0);
        m_clock->advance(1ms);
        settle();
        QCOMPARE(player.count(getAll), 2);
        QCOMPARE(m_changes->size(), 1);
        QCOMPARE(shown(), QStringLiteral("The next song"));
    }

    void whatIsOnlyInvalidatedIsAskedForAsWell()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.setTrack(title, QStringLiteral("The next song"));
        player.tellChange(metadata, true);
        gather();
        QCOMPARE(player.count(getAll), 2);
        QCOMPARE(shown(), QStringLiteral("The next song"));
    }

    void aSeekIsTold()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        m_changes->clear();
        player.tellSeek(5'000'000);
        gather();
        QCOMPARE(player.count(getAll), 2);
        QCOMPARE(m_changes->size(), 1);
    }

    void aThousandChangesInASecondAreAFewQuestions()
    {
        MprisDouble &shown = add(QStringLiteral("shown"));
        MprisDouble &player = add(QStringLiteral("one"));
        shown.setStatus(QStringLiteral("Playing"));
        player.setStatus(QStringLiteral("Paused"));
        begin();
        m_changes->clear();
        for (int millisecond = 0; millisecond < 1000; ++millisecond) {
            player.tellChange(metadata);
            // The first one of each fifty begins the time in which they are gathered.
            if (millisecond % 50 == 0 || millisecond % 50 == 49)
                settle();
            m_clock->advance(1ms);
            if (millisecond % 50 == 49)
                settle();
        }
        // After 50, 150, 350 and 750 ms.
        QCOMPARE(player.count(getAll), 1 + 4);
        // Nothing is other than it was, and nobody else pays for it.
        QCOMPARE(m_changes->size(), 0);
        QCOMPARE(shown.count(getAll), 1);
        // Once it was quiet it is heard at once again.
        m_clock->advance(10s);
        settle();
        const qsizetype before = player.count(getAll);
        player.tellChange(metadata);
        gather();
        QCOMPARE(player.count(getAll), before + 1);
    }

    void aThousandChangesOfItsNameInASecondAreTwentyQuestions()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        for (int millisecond = 0; millisecond < 1000; ++millisecond) {
            tellRootChange(player);
            if (millisecond % 50 == 0 || millisecond % 50 == 49)
                settle();
            m_clock->advance(1ms);
            if (millisecond % 50 == 49)
                settle();
        }
        QCOMPARE(player.count(getRoot), 1 + 20);
    }

    void aNameThatChangesWhileItIsAskedForIsAskedForAgain()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.hold(getRoot);
        tellRootChange(player);
        gather();
        QCOMPARE(player.count(getRoot), 2);
        tellRootChange(player);
        gather();
        QCOMPARE(player.count(getRoot), 2);
        player.release(getRoot);
        gather();
        gather();
        QCOMPARE(player.count(getRoot), 3);
    }

    void whatChangesWhileItIsAskedForIsAskedForAgain()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.hold(getAll);
        player.tellChange(metadata);
        gather();
        QCOMPARE(player.count(getAll), 2);
        player.tellChange(metadata);
        gather();
        QCOMPARE(player.count(getAll), 2);
        player.release(getAll);
        gather();
        QCOMPARE(player.count(getAll), 3);
    }

    void whatOtherInterfacesTellIsNotAskedFor()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
        const QString changed = QStringLiteral("PropertiesChanged");
        const QString tracks = QStringLiteral("org.mpris.MediaPlayer2.TrackList");
        player.tell(properties, changed, {tracks, QVariantMap(), QStringList()});
        player.tell(properties, changed, {7});
        player.tell(properties, changed, {});
        gather();
        QCOMPARE(player.count(getAll), 1);
        QCOMPARE(player.count(getRoot), 1);
    }

    void whatItSaysOfItselfIsReadAgainWhenThatChanges()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.setTrack(title, QString());
        begin();
        player.root.insert(QStringLiteral("Identity"), QStringLiteral("Another name"));
        tellRootChange(player);
        gather();
        QCOMPARE(shown(), QStringLiteral("Another name"));
    }

    void whatAStrangerTellsIsNotHeard()
    {
        const MprisDouble &player = add(QStringLiteral("one"));
        const MprisDouble &stranger = add(QStringLiteral("playerctld"));
        begin();
        stranger.tell(QStringLiteral("org.mpris.MediaPlayer2.Player"), QStringLiteral("Seeked"), {qint64(0)});
        gather();
        QCOMPARE(player.count(getAll), 1);
    }

    void aPlayerThatTellsNothingIsAskedAgainAfterASecond()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.setTrack(title, QStringLiteral("The next song"));
        m_clock->advance(999ms);
        QCOMPARE(shown(), QStringLiteral("A song"));
        QCOMPARE(player.count(getAll), 1);
        m_clock->advance(1ms);
        m_changes->clear();
        static_cast<void>(report());
        QCOMPARE(player.count(getAll), 2);
        QCOMPARE(m_changes->size(), 1);
        QCOMPARE(shown(), QStringLiteral("The next song"));
        // Nor is it a change when nothing changed.
        m_clock->advance(1s);
        static_cast<void>(report());
        QCOMPARE(player.count(getAll), 3);
        QCOMPARE(m_changes->size(), 1);
    }

    void oneThatIsNotShownIsAskedAgainAfterTenSeconds()
    {
        add(QStringLiteral("shown")).setStatus(QStringLiteral("Playing"));
        MprisDouble &player = add(QStringLiteral("two"));
        player.setStatus(QStringLiteral("Paused"));
        begin();
        m_clock->advance(9999ms);
        static_cast<void>(report());
        QCOMPARE(player.count(getAll), 1);
        m_clock->advance(1ms);
        static_cast<void>(report());
        QCOMPARE(player.count(getAll), 2);
    }

    /// Also by one that tells of no change.
    void whatBecameOfACommandIsAskedAtOnce()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        NowPlayingService service(*m_players, *m_clock);
        service.start();
        settle();
        QVERIFY(service.current().isPlaying);
        service.send(MusicCommand::playPause);
        settle();
        player.setStatus(QStringLiteral("Paused"));
        m_clock->advance(349ms);
        settle();
        QVERIFY(service.current().isPlaying);
        m_clock->advance(1ms);
        settle();
        QVERIFY(!service.current().isPlaying);
        // And what happened without one at the next poll but one at most.
        player.setTrack(title, QStringLiteral("The next song"));
        m_clock->advance(2s);
        settle();
        QCOMPARE(service.current().title, QStringLiteral("The next song"));
    }

    /// It may have been answered before the command was heard.
    void whatWasAskedBeforeACommandIsAskedAgain()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        m_clock->advance(1s);
        player.hold(getAll);
        static_cast<void>(report());
        QCOMPARE(player.count(getAll), 2);
        m_players->send(MusicSource::music, MusicCommand::playPause);
        player.release(getAll);
        settle();
        player.setStatus(QStringLiteral("Paused"));
        static_cast<void>(report());
        QCOMPARE(player.count(getAll), 3);
        QVERIFY(!report()->isPlaying);
        // What is asked after it is trusted.
        QCOMPARE(player.count(getAll), 3);
    }

    void aPositionThatStandsStillRunsOnAndLeaps()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.position = qint64(10'000'000);
        begin();
        QCOMPARE(report()->position, 10.0);
        m_clock->advance(2s);
        QCOMPARE(report()->position, 12.0);
        player.tell(QStringLiteral("org.mpris.MediaPlayer2.Player"), QStringLiteral("Seeked"), {qint64(40'000'000)});
        gather();
        m_clock->advance(1950ms);
        QCOMPARE(report()->position, 42.0);
    }

private:
    static void tellRootChange(const MprisDouble &player)
    {
        player.tell(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"),
            {QStringLiteral("org.mpris.MediaPlayer2"), QVariantMap(), QStringList{QStringLiteral("Identity")}});
    }
};

MOORLINE_TEST(MprisChangesTest);

#include "MprisChangesTest.moc"
