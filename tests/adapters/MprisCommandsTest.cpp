#include "MprisTestCase.h"

#include <QDir>
#include <QFile>

using namespace moorline;
using namespace moorline::test;

/// What players are told.
class MprisCommandsTest final : public MprisTestCase {
    Q_OBJECT
private Q_SLOTS:
    void commandsAreThePlayersOwn_data()
    {
        QTest::addColumn<MusicCommand>("command");
        QTest::addColumn<QString>("method");
        QTest::newRow("play or pause") << MusicCommand::playPause << QStringLiteral("PlayPause");
        QTest::newRow("next") << MusicCommand::next << QStringLiteral("Next");
        QTest::newRow("previous") << MusicCommand::previous << QStringLiteral("Previous");
    }
    void commandsAreThePlayersOwn()
    {
        QFETCH(const MusicCommand, command);
        QFETCH(const QString, method);
        const MprisDouble &spotify = add(QStringLiteral("spotify"));
        const MprisDouble &other = add(QStringLiteral("other"));
        begin();
        m_players->send(MusicSource::spotify, command);
        settle();
        QCOMPARE(spotify.calls().constLast(), method);
        QCOMPARE(spotify.count(method), 1);
        QCOMPARE(other.count(method), 0);
        m_players->send(MusicSource::music, command);
        settle();
        QCOMPARE(other.count(method), 1);
        QCOMPARE(spotify.count(method), 1);
    }

    void nothingIsSentToNobody()
    {
        begin();
        m_players->send(MusicSource::music, MusicCommand::playPause);
        m_players->open(MusicSource::music);
        settle();
        QCOMPARE(m_workspace->openings.size(), 0);
    }

    void whoWasReportedLastIsMeant()
    {
        const MprisDouble &first = add(QStringLiteral("one"));
        begin();
        QVERIFY(report());
        const MprisDouble &second = addKnown(QStringLiteral("two"));
        m_players->send(MusicSource::music, MusicCommand::playPause);
        settle();
        QCOMPARE(first.count(QStringLiteral("PlayPause")), 1);
        QVERIFY(report());
        m_players->send(MusicSource::music, MusicCommand::playPause);
        settle();
        QCOMPARE(second.count(QStringLiteral("PlayPause")), 1);
    }

    void whatIsMeantForAPlayerThatQuitReachesNoOther()
    {
        MprisDouble &first = add(QStringLiteral("one"));
        MprisDouble &second = add(QStringLiteral("two"));
        second.setStatus(QStringLiteral("Paused"));
        begin();
        QVERIFY(report());
        first.quit();
        settle();
        const QString playPause = QStringLiteral("PlayPause");
        m_players->send(MusicSource::music, MusicCommand::playPause);
        settle();
        QCOMPARE(second.count(playPause), 0);
        QVERIFY(report());
        m_players->send(MusicSource::music, MusicCommand::playPause);
        settle();
        QCOMPARE(second.count(playPause), 1);
    }

    void aPlayerThatQuitDoesNotComeBack()
    {
        const QTemporaryDir services;
        const QString mark = services.filePath(QStringLiteral("started"));
        const QString name = MprisDouble::fullName(QStringLiteral("one"));
        QFile file(services.filePath(name + QStringLiteral(".service")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[D-BUS Service]\nName=" + name.toUtf8() + "\nExec=/bin/touch " + mark.toLocal8Bit() + "\n");
        file.close();
        m_daemon->setServices(services.path());
        restartDaemon();

        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        QVERIFY(report());
        player.quit();
        // Nobody has heard of it yet.
        QVERIFY(m_players->isRunning(MusicSource::music));
        m_players->send(MusicSource::music, MusicCommand::playPause);
        const Query query(m_players->query(MusicSource::music));
        m_players->open(MusicSource::music);
        QTRY_VERIFY(query.isThere());
        settle();
        QVERIFY(!QFile::exists(mark));

        // The bus would have started it for a call that asks for that.
        QDBusConnection(m_bus->connection())
            .send(QDBusMessage::createMethodCall(name, QStringLiteral("/"), {}, QStringLiteral("Come")));
        QTRY_VERIFY(QFile::exists(mark));
    }

    void itsWindowsComeToTheFront()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.root.insert(QStringLiteral("DesktopEntry"), QStringLiteral("org.a.player"));
        player.root.insert(QStringLiteral("CanRaise"), true);
        install();
        m_workspace->launch(QStringLiteral("other"), QStringLiteral("/other.desktop"));
        const RunningApplication running = m_workspace->launch(QStringLiteral("org.a.player"), path);
        begin();
        m_players->open(MusicSource::music);
        QCOMPARE(m_workspace->activated, QList<RunningApplication>{running});
        settle();
        QCOMPARE(player.count(QStringLiteral("Raise")), 0);
        QCOMPARE(m_workspace->openings.size(), 0);
    }

    void anEntryMayBeNamedByItsWholeFile()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.root.insert(QStringLiteral("DesktopEntry"), QStringLiteral("org.a.player.desktop"));
        install();
        const RunningApplication running = m_workspace->launch(QStringLiteral("org.a.player"), path);
        begin();
        m_players->open(MusicSource::music);
        QCOMPARE(m_workspace->activated, QList<RunningApplication>{running});
    }

    void withoutAnEntryTheWindowsOfItsProcessDo()
    {
        add(QStringLiteral("one"));
        m_workspace->launch(QStringLiteral("other"), QStringLiteral("/other.desktop"));
        m_workspace->launch(QStringLiteral("unknown"), QStringLiteral("/unknown.desktop"));
        RunningApplication &own = m_workspace->running->last();
        own.process = QCoreApplication::applicationPid();
        begin();
        m_players->open(MusicSource::music);
        QCOMPARE(m_workspace->activated, QList<RunningApplication>{own});
    }

    void ofSeveralOfItsEntryItsProcessCounts()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.root.insert(QStringLiteral("DesktopEntry"), QStringLiteral("org.a.player"));
        install();
        m_workspace->launch(QStringLiteral("org.a.player"), path);
        m_workspace->launch(QStringLiteral("org.a.player"), path);
        RunningApplication &own = m_workspace->running->last();
        own.process = QCoreApplication::applicationPid();
        begin();
        m_players->open(MusicSource::music);
        QCOMPARE(m_workspace->activated, QList<RunningApplication>{own});
    }

    void withoutWindowsItIsAskedToShowItself()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.root.insert(QStringLiteral("DesktopEntry"), QStringLiteral("org.a.player"));
        player.root.insert(QStringLiteral("CanRaise"), true);
        install();
        begin();
        m_players->open(MusicSource::music);
        settle();
        QCOMPARE(player.count(QStringLiteral("Raise")), 1);
        QCOMPARE(m_workspace->openings.size(), 0);
    }

    void oneThatCannotIsStarted()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.root.insert(QStringLiteral("DesktopEntry"), QStringLiteral("org.a.player"));
        player.root.insert(QStringLiteral("CanRaise"), false);
        install();
        // Without a window manager nobody knows of windows.
        m_workspace->running.reset();
        begin();
        m_players->open(MusicSource::music);
        settle();
        QCOMPARE(player.count(QStringLiteral("Raise")), 0);
        QCOMPARE(m_workspace->openings.size(), 1);
        QCOMPARE(m_workspace->openings.constFirst().path, path);
        QVERIFY(m_workspace->openings.constFirst().files.isEmpty());
    }

    void oneOfWhichNothingIsKnownStaysWhereItIs()
    {
        const MprisDouble &player = add(QStringLiteral("one"));
        m_workspace->launch(QStringLiteral("other"), QStringLiteral("/other.desktop"));
        begin();
        m_players->open(MusicSource::music);
        settle();
        QCOMPARE(player.count(QStringLiteral("Raise")), 0);
        QVERIFY(m_workspace->activated.isEmpty());
        QVERIFY(m_workspace->openings.isEmpty());
    }

private:
    static inline const QString path = QStringLiteral("/applications/org.a.player.desktop");

    void install() { m_workspace->installed.insert(QStringLiteral("org.a.player"), path); }
    /// With what is in the environment now.
    void restartDaemon()
    {
        m_daemon->end();
        QTRY_VERIFY(!m_bus->isOpen());
        leaveBus();
        QVERIFY(m_daemon->start());
        openBus();
    }
};

MOORLINE_TEST(MprisCommandsTest);

#include "MprisCommandsTest.moc"
