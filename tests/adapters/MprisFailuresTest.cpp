#include "MprisTestCase.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

/// Players that are damaged, silent, or go.
class MprisFailuresTest final : public MprisTestCase {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<QMap<QString, QString>>();
        qDBusRegisterMetaType<QMap<int, QString>>();
    }

    void damageInATrackCostsThatAlone_data()
    {
        QTest::addColumn<QVariant>("told");
        QTest::addColumn<QString>("shown");
        const QString name = QStringLiteral("A player");
        const auto row = [](const char *what, const QVariant &told, const QString &shown) {
            QTest::newRow(what) << told << shown;
        };
        qDBusRegisterMetaType<QList<QVariantMap>>();
        const QVariantMap track{{title, QStringLiteral("A song")}};
        row("a{ss}", QVariant::fromValue(QMap<QString, QString>{{title, QStringLiteral("A song")}}), name);
        row("a{is}", QVariant::fromValue(QMap<int, QString>{{1, QStringLiteral("A song")}}), name);
        row("aa{sv}", QVariant::fromValue(QList<QVariantMap>{track}), name);
        row("as", QStringList{title}, name);
        row("ay", QByteArray("A song"), name);
        row("o", QVariant::fromValue(QDBusObjectPath(QStringLiteral("/track"))), name);
        row("g", QVariant::fromValue(QDBusSignature(QStringLiteral("a{sv}"))), name);
        row("s", QStringLiteral("A song"), name);
        row("d", 1.5, name);
        row("v of a{sv}", QVariant::fromValue(QDBusVariant(track)), QStringLiteral("A song"));
    }
    void damageInATrackCostsThatAlone()
    {
        QFETCH(const QVariant, told);
        QFETCH(const QString, shown);
        MprisDouble &player = add(QStringLiteral("one"));
        player.player.insert(metadata, told);
        begin();
        QCOMPARE(this->shown(), shown);
        QVERIFY(report()->isPlaying);
    }

    void damageDeepInATrackCostsThatAlone()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        QVariant deep = QStringLiteral("deep");
        for (int level = 0; level < 20; ++level)
            deep = QVariant::fromValue(QDBusVariant(deep));
        player.setTrack(QStringLiteral("xesam:album"), deep);
        player.setTrack(QStringLiteral("xesam:artist"), QVariant::fromValue(QList<QVariantMap>{{}}));
        player.setTrack(QStringLiteral("mpris:length"), QVariant::fromValue(QDBusVariant(qint64(2'000'000))));
        begin();
        const auto told = report();
        QVERIFY(told);
        QCOMPARE(told->title, QStringLiteral("A song"));
        QCOMPARE(told->album, QString());
        QCOMPARE(told->artist, QString());
        QCOMPARE(told->duration, 2.0);
    }

    void anAnswerThatIsNoneIsNoResult_data()
    {
        QTest::addColumn<QVariantList>("answer");
        QTest::newRow("nothing") << QVariantList();
        QTest::newRow("a text") << QVariantList{QStringLiteral("Playing")};
        QTest::newRow("two") << QVariantList{QVariantMap(), QVariantMap()};
        QTest::newRow("no properties") << QVariantList{QVariantMap()};
        QTest::newRow("another status") << QVariantList{
            QVariantMap{{QStringLiteral("PlaybackStatus"), QStringLiteral("?")}}};
    }
    void anAnswerThatIsNoneIsNoResult()
    {
        QFETCH(const QVariantList, answer);
        MprisDouble &player = add(QStringLiteral("one"));
        player.answerWith(getAll, answer);
        begin();
        QVERIFY(!report());
        QVERIFY(m_players->isRunning(MusicSource::music));
    }

    void aRefusalIsNoResultAndIsAskedForAgain()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.fail(getAll, QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"));
        begin();
        QVERIFY(!report());
        QCOMPARE(player.count(getAll), 2);
        QVERIFY(!report());
        QCOMPARE(player.count(getAll), 3);
    }

    void aPositionThatIsNoneIsTheBeginning_data()
    {
        QTest::addColumn<QVariantList>("answer");
        QTest::newRow("a text") << QVariantList{QVariant::fromValue(QDBusVariant(QStringLiteral("1")))};
        QTest::newRow("not wrapped") << QVariantList{qint64(1'000'000)};
        QTest::newRow("nothing") << QVariantList();
    }
    void aPositionThatIsNoneIsTheBeginning()
    {
        QFETCH(const QVariantList, answer);
        MprisDouble &player = add(QStringLiteral("one"));
        player.answerWith(getPosition, answer);
        begin();
        QVERIFY(report());
        QCOMPARE(report()->position, 0.0);
    }

    void aPlayerThatRefusesToSayWhereItIsIsAtTheBeginning()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.fail(getPosition, QStringLiteral("org.freedesktop.DBus.Error.UnknownProperty"));
        begin();
        QVERIFY(report());
        QCOMPARE(report()->position, 0.0);
    }

    void aPlayerThatIsSilentFromTheBeginningIsNoResult()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.hold(getAll);
        begin();
        // Nobody waits for it.
        const Query query(m_players->query(MusicSource::music));
        QVERIFY(query.isThere());
        QVERIFY(!query.value());
        m_clock->advance(1999ms);
        QVERIFY(!report());
        QCOMPARE(player.count(getAll), 1);
        m_clock->advance(1ms);
        QVERIFY(!report());
        QCOMPARE(player.count(getAll), 2);
        m_changes->clear();
        player.release(getAll);
        settle();
        QCOMPARE(m_changes->size(), 1);
        QCOMPARE(shown(), QStringLiteral("A song"));
    }

    void aPlayerThatFallsSilentIsNoResultAfterTwoSeconds()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.hold(getPosition);
        const Query query(m_players->query(MusicSource::music));
        settle();
        m_clock->advance(1999ms);
        QVERIFY(!query.isThere());
        m_clock->advance(1ms);
        QVERIFY(query.isThere());
        QVERIFY(!query.value());
        // It is asked again at the next query, and counts again once it answers.
        player.release(getPosition);
        QCOMPARE(player.count(getAll), 1);
        QVERIFY(!report());
        QCOMPARE(player.count(getAll), 2);
        QCOMPARE(shown(), QStringLiteral("A song"));
    }

    void aPlayerThatDoesNotSayWhereItIsRunsOnUntilItTellsOfAChange()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.hold(getPosition);
        const Query query(m_players->query(MusicSource::music));
        settle();
        m_clock->advance(2s);
        QVERIFY(query.isThere());
        QVERIFY(!report());
        QCOMPARE(report()->position, 0.0);
        m_clock->advance(3s);
        QCOMPARE(report()->position, 3.0);
        QCOMPARE(player.count(getPosition), 1);
        player.release(getPosition);
        player.position = qint64(7'000'000);
        player.tellChange(metadata);
        gather();
        QCOMPARE(report()->position, 7.0);
        QCOMPARE(player.count(getPosition), 2);
    }

    void aChangeThatIsToldBeforeASilenceEndsItOnceItIsRead()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.hold(getPosition);
        const Query query(m_players->query(MusicSource::music));
        settle();
        player.hold(getAll);
        player.tellChange(metadata);
        gather();
        player.tellChange(metadata);
        settle();
        m_clock->advance(1960ms);
        QVERIFY(query.isThere());
        player.release(getAll);
        settle();
        m_clock->advance(2s);
        settle();
        player.release(getPosition);
        player.position = qint64(7'000'000);
        QVERIFY(report());
        QCOMPARE(report()->position, 7.0);
    }

    void aChangeThatASilentPlayerTellsTakesItsRowAway()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.hold(getAll);
        player.tellChange(metadata);
        gather();
        QVERIFY(report());
        m_changes->clear();
        m_clock->advance(2s);
        QCOMPARE(m_changes->size(), 1);
        QVERIFY(!report());
    }

    void aSilentPlayerCostsNoOther()
    {
        MprisDouble &other = add(QStringLiteral("other"));
        begin();
        other.setTrack(title, QStringLiteral("Another song"));
        other.tellChange(metadata);
        gather();
        MprisDouble &silent = add(QStringLiteral("silent"));
        silent.hold(getAll);
        silent.hold(getRoot);
        settle();
        QCOMPARE(shown(), QStringLiteral("Another song"));
        silent.release(getAll);
        settle();
        QCOMPARE(shown(), QStringLiteral("A song"));
        // Even when it falls silent in the middle of a question.
        silent.hold(getPosition);
        const Query query(m_players->query(MusicSource::music));
        settle();
        m_clock->advance(2s);
        QTRY_VERIFY(query.isThere());
        QVERIFY(query.value());
        QCOMPARE(query.value()->title, QStringLiteral("Another song"));
    }

    void aPlayerThatQuitsWhileItIsAskedIsNoResult()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.hold(getPosition);
        const Query query(m_players->query(MusicSource::music));
        settle();
        QVERIFY(!query.isThere());
        player.quit();
        QTRY_VERIFY(query.isThere());
        QVERIFY(!query.value());
        settle();
        QVERIFY(!m_players->isRunning(MusicSource::music));
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void aPlayerThatQuitsWhileItIsReadIsGone()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        player.hold(getAll);
        player.hold(getRoot);
        begin();
        player.quit();
        settle();
        QVERIFY(!m_players->isRunning(MusicSource::music));
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void aBusThatEndsEndsAQuestion()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        begin();
        player.hold(getPosition);
        const Query query(m_players->query(MusicSource::music));
        settle();
        m_daemon->end();
        QTRY_VERIFY(query.isThere());
        QVERIFY(!query.value());
        QVERIFY(!m_players->isRunning(MusicSource::music));
    }

    void whoAsksIsAnsweredWhenItAllEnds()
    {
        MprisDouble &player = add(QStringLiteral("one"));
        add(QStringLiteral("two"));
        begin();
        for (const auto &one : m_doubles)
            one->hold(getPosition);
        const Query query(m_players->query(MusicSource::music));
        settle();
        m_players.reset();
        QVERIFY(query.isThere());
        QVERIFY(!query.value());
        QCOMPARE(m_clock->runningTimers(), 0);
        QCOMPARE(player.count(getAll), 1);
    }
};

MOORLINE_TEST(MprisFailuresTest);

#include "MprisFailuresTest.moc"
