#include "SyncTestCase.h"
#include "support/FolderLock.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class SettingsSyncTest final : public SyncTestCase {
    Q_OBJECT
private Q_SLOTS:
    void whatAnotherWritesCountsAtOnce()
    {
        begin();
        const Settings theirs = writeTheirs([](Settings &settings) { settings.bottomGap = 9; });
        tell();
        m_clock->advance(74ms);
        QCOMPARE(m_sync->settings(), introducedDefaults());
        m_clock->advance(1ms);
        QCOMPARE(m_sync->settings(), theirs);
        QCOMPARE(m_changes->count(), 1);
        QCOMPARE(m_changes->first().first().value<Settings>(), introducedDefaults());
        QCOMPARE(contents(m_path), encodeSettings(theirs));
    }

    void whatIsToldAtOnceIsLookedAtOnce()
    {
        begin();
        for (int gap = 3; gap < 8; ++gap) {
            writeTheirs([gap](Settings &settings) { settings.bottomGap = gap; });
            tell();
            m_clock->advance(15ms);
        }
        QCOMPARE(m_changes->count(), 1);
        QCOMPARE(m_sync->settings().bottomGap, 7.0);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void oneThatNeverStopsWritingIsFollowed()
    {
        begin();
        for (int gap = 3; gap < 43; ++gap) {
            writeTheirs([gap](Settings &settings) { settings.bottomGap = gap; });
            tell();
            m_clock->advance(10ms);
        }
        QVERIFY(m_changes->count() >= 5);
    }

    void theOwnWriteIsNoNews()
    {
        begin();
        m_sync->change([](Settings &settings) { settings.bottomGap = 9; });
        const QDateTime written = QFileInfo(m_path).lastModified();
        tell();
        m_clock->advance(10s);
        QCOMPARE(m_changes->count(), 1);
        QCOMPARE(QFileInfo(m_path).lastModified(), written);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void aStartThatFindsAllAsItWouldWriteItWritesNothing()
    {
        begin();
        const QDateTime longAgo = m_clock->now().addDays(-1);
        setModified(longAgo);
        begin();
        m_sync->change([](Settings &settings) { settings.bottomGap = 2; });
        QCOMPARE(QFileInfo(m_path).lastModified(), longAgo);
    }

    void anIncompleteFileIsCompletedAtTheStart()
    {
        write(R"({"bottomGap":9,"pinnedItemsIntroduced":true})");
        begin();
        Settings expected = introducedDefaults();
        expected.bottomGap = 9;
        QCOMPARE(contents(m_path), encodeSettings(expected));
    }

    void anotherHandIsLeftAsItIs()
    {
        begin();
        const QByteArray theirs = R"({"bottomGap":9, "pinnedItemsIntroduced":true, "colour":"red"})";
        write(theirs);
        look();
        QCOMPARE(m_sync->settings().bottomGap, 9.0);
        QCOMPARE(contents(m_path), theirs);
    }

    void anOlderFilePutInPlaceGetsThePinnedItemsWidget()
    {
        begin();
        write(R"({"enabledWidgets":["clock"]})");
        look();
        QCOMPARE(m_sync->settings().enabledWidgets, (QList{WidgetKind::clock, WidgetKind::pinnedItems}));
        QCOMPARE(onDisk(), std::optional(m_sync->settings()));
    }

    void aChangeGoesOnTopOfWhatIsInTheFile()
    {
        begin();
        Settings both = writeTheirs([](Settings &settings) { settings.recentAppCount = 8; });
        both.bottomGap = 9;
        m_sync->change([](Settings &settings) { settings.bottomGap = 9; });
        QCOMPARE(m_sync->settings(), both);
        QCOMPARE(onDisk(), std::optional(both));
        QCOMPARE(m_changes->count(), 1);
        QCOMPARE(m_changes->first().first().value<Settings>(), introducedDefaults());
    }

    void whatTwoAddToOneListIsAllThere()
    {
        begin();
        const PinnedItem ours{QStringLiteral("/ours"), QStringLiteral("ours")};
        const PinnedItem theirs{QStringLiteral("/theirs"), QStringLiteral("theirs")};
        writeTheirs([&](Settings &settings) { settings.pinnedItems.append(theirs); });
        m_sync->change([&](Settings &settings) { settings.pinnedItems.append(ours); });
        QCOMPARE(onDisk()->pinnedItems, (QList{theirs, ours}));
    }

    void aHalfWrittenFileIsWaitedFor()
    {
        begin();
        const Settings theirs = changed([](Settings &settings) { settings.bottomGap = 9; });
        const QByteArray whole = encodeSettings(theirs);
        write(whole.first(200));
        look();
        QCOMPARE(m_sync->settings(), introducedDefaults());
        write(whole);
        m_clock->advance(250ms);
        QCOMPARE(m_sync->settings(), theirs);
        QVERIFY(!QFile::exists(m_damagedPath));
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void aChangeWhileTheFileIsHalfWrittenWaitsAndIsKept()
    {
        begin();
        const QByteArray whole = encodeSettings(changed([](Settings &settings) { settings.bottomGap = 9; }));
        write(whole.first(200));
        m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
        QCOMPARE(m_sync->settings().recentAppCount, 8);
        QCOMPARE(m_changes->count(), 1);
        m_clock->advance(2s);
        QCOMPARE(contents(m_path), whole.first(200));
        write(whole);
        m_clock->advance(250ms);
        QCOMPARE(onDisk()->bottomGap, 9.0);
        QCOMPARE(onDisk()->recentAppCount, 8);
        QCOMPARE(onDisk(), std::optional(m_sync->settings()));
    }

    void aDamagedFileIsKeptAsideBeforeTheFirstWrite()
    {
        begin();
        write("{ \"bottomGap\": 9");
        look();
        m_clock->advance(10s);
        QCOMPARE(contents(m_path), QByteArray("{ \"bottomGap\": 9"));
        QCOMPARE(m_clock->runningTimers(), 0);
        m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
        QCOMPARE(contents(m_damagedPath), QByteArray("{ \"bottomGap\": 9"));
        QCOMPARE(onDisk()->recentAppCount, 8);
    }

    void aFileThatIsStillWrittenIsNotDamaged()
    {
        begin();
        QByteArray growing = "{";
        for (int step = 0; step < 6; ++step) {
            growing += "\"key" + QByteArray::number(step) + "\":1,";
            write(growing);
            tell();
            m_sync->change([step](Settings &settings) { settings.recentAppCount = 10 + step; });
            m_clock->advance(2s);
            QVERIFY(!QFile::exists(m_damagedPath));
        }
        m_clock->advance(1s + SettingsSync::unreadableRetry);
        QCOMPARE(contents(m_damagedPath), growing);
        QCOMPARE(onDisk()->recentAppCount, 15);
    }

    void aDamagedFileIsWaitedForThreeSecondsAtTheStart()
    {
        write("{");
        begin();
        QCOMPARE(m_sync->settings(), introducedDefaults());
        m_clock->advance(2999ms);
        QCOMPARE(contents(m_path), QByteArray("{"));
        m_clock->advance(1ms);
        QCOMPARE(contents(m_damagedPath), QByteArray("{"));
        QCOMPARE(onDisk(), std::optional(introducedDefaults()));
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void aFileThatHasLongBeenDamagedIsNotWaitedFor()
    {
        write("{");
        setModified(m_clock->now().addSecs(-3));
        begin();
        QCOMPARE(contents(m_damagedPath), QByteArray("{"));
        QCOMPARE(onDisk(), std::optional(introducedDefaults()));
    }

    void noDamagedFileTakesThePlaceOfAnother()
    {
        QVERIFY(QFile::link(m_root->filePath(QStringLiteral("nowhere")), m_damagedPath + QStringLiteral(".3")));
        for (const char *damage : {"one", "two", "three"}) {
            write(damage);
            setModified(m_clock->now().addSecs(-3));
            begin();
        }
        QCOMPARE(contents(m_damagedPath), QByteArray("one"));
        QCOMPARE(contents(m_damagedPath + QStringLiteral(".2")), QByteArray("two"));
        QCOMPARE(contents(m_damagedPath + QStringLiteral(".4")), QByteArray("three"));
        QCOMPARE(onDisk(), std::optional(introducedDefaults()));
    }

    void ofALinkTheFileAtItsEndIsKeptAside()
    {
        const QString target = m_root->filePath(QStringLiteral("elsewhere"));
        QVERIFY(QFile::link(target, m_path));
        write("{");
        setModified(m_clock->now().addSecs(-3));
        begin();
        QCOMPARE(contents(m_damagedPath), QByteArray("{"));
        QCOMPARE(QFile::symLinkTarget(m_path), target);
        QCOMPARE(decodeSettings(contents(target)), std::optional(introducedDefaults()));
    }

    void aFileThatWasRemovedComesBackWithTheNextChange()
    {
        begin();
        QVERIFY(QFile::remove(m_path));
        look();
        m_clock->advance(10s);
        QVERIFY(!QFile::exists(m_path));
        m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
        QCOMPARE(onDisk(), std::optional(m_sync->settings()));
    }

    void aFolderThatWasRemovedComesBackWithTheNextChange()
    {
        m_path = m_root->filePath(QStringLiteral("folder/settings.json"));
        begin();
        QVERIFY(QDir(m_root->filePath(QStringLiteral("folder"))).removeRecursively());
        m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
        QCOMPARE(onDisk(), std::optional(m_sync->settings()));
    }

    void whatCouldNotBeWrittenIsWrittenOnceItCan()
    {
        begin();
        QVERIFY(QFile::remove(m_path));
        QVERIFY(QDir().mkdir(m_path));
        m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
        QVERIFY(QDir().rmdir(m_path));
        look();
        QCOMPARE(onDisk()->recentAppCount, 8);
    }

    void nobodyWritesWhileAnotherHasItsHandOnTheFolder()
    {
        begin();
        auto other = std::make_unique<FolderLock>(m_root->path());
        QVERIFY(other->isMine());
        m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
        QCOMPARE(m_sync->settings().recentAppCount, 8);
        QCOMPARE(m_changes->count(), 1);
        m_clock->advance(1s);
        QCOMPARE(onDisk()->recentAppCount, 3);
        writeTheirs([](Settings &settings) { settings.bottomGap = 9; });
        other.reset();
        m_clock->advance(1s);
        QCOMPARE(onDisk()->recentAppCount, 8);
        QCOMPARE(onDisk()->bottomGap, 9.0);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void whoHoldsOnIsAskedEverLessOften_data()
    {
        QTest::addColumn<int>("heldFor");
        QTest::addColumn<int>("savedAfter");
        const auto row = [](int heldFor, int savedAfter) { QTest::addRow("%d", heldFor) << heldFor << savedAfter; };
        row(0, 20);
        row(19, 20);
        row(20, 60);
        row(60, 140);
        row(140, 300);
        row(300, 620);
        row(620, 1260);
        row(1260, 2540);
        row(2540, 4540);
        row(4540, 6540);
        row(6540, 8540);
        row(600000, 600540);
    }

    void whoHoldsOnIsAskedEverLessOften()
    {
        QFETCH(int, heldFor);
        QFETCH(int, savedAfter);
        begin();
        auto other = std::make_unique<FolderLock>(m_root->path());
        m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
        m_clock->advance(std::chrono::milliseconds(heldFor));
        other.reset();
        m_clock->advance(std::chrono::milliseconds(savedAfter - heldFor - 1));
        QCOMPARE(onDisk()->recentAppCount, 3);
        m_clock->advance(1ms);
        QCOMPARE(onDisk()->recentAppCount, 8);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void whatIsChangedMeanwhilePutsNothingOff()
    {
        begin();
        auto other = std::make_unique<FolderLock>(m_root->path());
        for (int count = 4; count < 8; ++count) {
            m_sync->change([count](Settings &settings) { settings.recentAppCount = count; });
            m_clock->advance(4ms);
        }
        other.reset();
        m_clock->advance(3ms);
        QCOMPARE(onDisk()->recentAppCount, 3);
        m_clock->advance(1ms);
        QCOMPARE(onDisk()->recentAppCount, 7);
    }

    void afterItLetGoTheNextOneIsAskedOftenAgain()
    {
        begin();
        for (int count = 4; count < 7; ++count) {
            auto other = std::make_unique<FolderLock>(m_root->path());
            m_sync->change([count](Settings &settings) { settings.recentAppCount = count; });
            m_clock->advance(21ms);
            other.reset();
            m_clock->advance(38ms);
            QCOMPARE(onDisk()->recentAppCount, count - 1);
            m_clock->advance(1ms);
            QCOMPARE(onDisk()->recentAppCount, count);
        }
    }

    void ofOneListTheLaterWriteStandsWhole()
    {
        begin();
        QList<WidgetKind> mine = m_sync->settings().enabledWidgets;
        mine.removeOne(WidgetKind::clock);
        {
            const FolderLock other(m_root->path());
            m_sync->change([&](Settings &settings) { settings.enabledWidgets = mine; });
            writeTheirs([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock}; });
        }
        m_clock->advance(20ms);
        QCOMPARE(m_sync->settings().enabledWidgets, mine);
        QCOMPARE(onDisk()->enabledWidgets, mine);
    }

    void whatIsNotSavedYetIsSavedAtTheEnd()
    {
        begin();
        {
            const FolderLock other(m_root->path());
            m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
            writeTheirs([](Settings &settings) { settings.bottomGap = 9; });
        }
        m_sync.reset();
        QCOMPARE(onDisk()->recentAppCount, 8);
        QCOMPARE(onDisk()->bottomGap, 9.0);
    }

    void aListenerMayMakeAChangeThatIsSavedAtOnce()
    {
        begin();
        connect(m_sync.get(), &SettingsSync::didChange, this, [this](const Settings &before) {
            if (before.recentAppCount == 3)
                m_sync->change([](Settings &settings) { settings.recentAppCount = 5; });
        });
        m_sync->change([](Settings &settings) { settings.recentAppCount = 4; });
        QCOMPARE(onDisk()->recentAppCount, 5);
    }

    void twoOnOneFileEndWithTheChangesOfBoth()
    {
        begin();
        SettingsSync other(m_path, *m_clock, m_fileWatch);
        m_sync->change([](Settings &settings) { settings.recentAppCount = 8; });
        other.change([](Settings &settings) { settings.bottomGap = 9; });
        look();
        QCOMPARE(m_sync->settings(), other.settings());
        QCOMPARE(onDisk(), std::optional(other.settings()));
        QCOMPARE(other.settings().recentAppCount, 8);
        QCOMPARE(other.settings().bottomGap, 9.0);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void theWatchEndsWithTheOneWhoAsked()
    {
        begin();
        QCOMPARE(m_fileWatch.watched(), 1);
        tell();
        m_sync.reset();
        QCOMPARE(m_fileWatch.watched(), 0);
        QCOMPARE(m_clock->runningTimers(), 0);
    }
};

MOORLINE_TEST(SettingsSyncTest);
#include "SettingsSyncTest.moc"
