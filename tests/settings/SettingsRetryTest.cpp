#include "SyncTestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

/// What follows a write that failed.
class SettingsRetryTest final : public SyncTestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        SyncTestCase::init();
        m_folder = m_root->filePath(QStringLiteral("folder"));
        m_path = m_folder + QStringLiteral("/settings.json");
    }

    void itIsTriedAgainUntilItSucceeds_data()
    {
        QTest::addColumn<int>("moment");
        for (const int moment : {20, 60, 180, 780, 1380, 1980, 7380})
            QTest::addRow("%d s", moment) << moment;
    }

    void itIsTriedAgainUntilItSucceeds()
    {
        QFETCH(int, moment);
        changeWhileBlocked();
        m_clock->advance(std::chrono::seconds(moment) - 1ms);
        unblock();
        QVERIFY(!QFile::exists(m_path));
        m_clock->advance(1ms);
        QCOMPARE(onDisk(), std::optional(m_sync->settings()));
        QCOMPARE(m_sync->settings().bottomGap, 9.0);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void betweenTheMomentsNothingIsTried_data()
    {
        QTest::addColumn<int>("moment");
        for (const int moment : {0, 20, 60, 180, 780, 1380})
            QTest::addRow("after %d s", moment) << moment;
    }

    void betweenTheMomentsNothingIsTried()
    {
        QFETCH(int, moment);
        changeWhileBlocked();
        m_clock->advance(std::chrono::seconds(moment));
        unblock();
        m_clock->advance(19s);
        QVERIFY(!QFile::exists(m_path));
    }

    void theChangeIsInEffectMeanwhile()
    {
        changeWhileBlocked();
        QCOMPARE(m_sync->settings().bottomGap, 9.0);
        QCOMPARE(m_changes->count(), 1);
        m_clock->advance(1000s);
        QCOMPARE(m_sync->settings().bottomGap, 9.0);
        QCOMPARE(m_changes->count(), 1);
    }

    void aFurtherChangeTriesItAtOnceAndMovesNoMoment()
    {
        changeWhileBlocked();
        m_clock->advance(10s);
        m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
        m_clock->advance(10s - 1ms);
        unblock();
        m_clock->advance(1ms);
        QCOMPARE(onDisk()->recentAppCount, 8);

        block();
        m_sync->change([](Settings &settings) { settings.recentAppCount = 7; });
        unblock();
        m_sync->change([](Settings &settings) { settings.bottomGap = 10; });
        QCOMPARE(onDisk()->recentAppCount, 7);
        QCOMPARE(onDisk()->bottomGap, 10.0);
    }

    void aLaterFailureIsTriedFromTheFirstMomentAgain()
    {
        changeWhileBlocked();
        m_clock->advance(100s);
        unblock();
        m_clock->advance(80s);
        QVERIFY(onDisk());
        block();
        m_sync->change([](Settings &settings) { settings.recentAppCount = 7; });
        unblock();
        m_clock->advance(20s);
        QCOMPARE(onDisk()->recentAppCount, 7);
    }

    void aChangeThatWasTakenBackNeedsNoRetry()
    {
        begin();
        QVERIFY(QFile::remove(m_path));
        QVERIFY(QDir().mkpath(m_path));
        m_sync->change([](Settings &settings) { settings.bottomGap = 9; });
        QCOMPARE(m_clock->runningTimers(), 1);
        m_sync->change([](Settings &settings) { settings.bottomGap = 2; });
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void whatIsInThePlaceOfTheFileMayGo()
    {
        QVERIFY(QDir().mkpath(m_path));
        begin();
        QVERIFY(QDir().rmdir(m_path));
        m_clock->advance(20s);
        QCOMPARE(onDisk(), std::optional(introducedDefaults()));
    }

    void theEndIsTheLastTry()
    {
        changeWhileBlocked();
        unblock();
        m_sync.reset();
        QCOMPARE(onDisk()->bottomGap, 9.0);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

private:
    void changeWhileBlocked()
    {
        block();
        begin();
        m_sync->change([](Settings &settings) { settings.bottomGap = 9; });
    }

    /// A file where the folder belongs.
    void block() const
    {
        QDir(m_folder).removeRecursively();
        QFile file(m_folder);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    void unblock() const { QVERIFY(QFile::remove(m_folder)); }

    QString m_folder;
};

MOORLINE_TEST(SettingsRetryTest);
#include "SettingsRetryTest.moc"
