#include "platform/linux/apps/LinuxTrashBin.h"

#include "EntriesOnDisk.h"
#include "SecondVolume.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/apps/AppStarter.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/bus/Bus.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <sys/stat.h>
#include <unistd.h>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

/// A home with a trash of its own, a file manager, and whoever counts what is thrown away.
struct Desktop {
    explicit Desktop(const QByteArray &otherVolume = {}, const QString &otherHome = {})
        : volume(otherVolume.isEmpty() ? QFile::encodeName(disk.path(QStringLiteral("volume"))) : otherVolume)
        , homeTrash(otherHome.isEmpty() ? disk.path(QStringLiteral("Trash")) : otherHome)
    {
    }

    [[nodiscard]] QString writeFileManager() const
    {
        const QByteArray place = QFile::encodeName(shown());
        const QByteArray script =
            "#!/bin/sh\nprintf '%s' \"$1\" >" + place + ".part\nmv " + place + ".part " + place + '\n';
        const QString program = disk.writeProgram(disk.path(QStringLiteral("files")), script);
        return disk.writeEntry(disk.own(QStringLiteral("files")),
            "Name=Files\nMimeType=inode/directory;\nCategories=FileManager;\nExec=" + QFile::encodeName(program)
                + " %U");
    }
    void look()
    {
        bin->look([this](bool isFull) { answers.append(isFull); });
    }
    void throwAway() const { disk.write(home() + QStringLiteral("/files/a"), "a"); }
    /// Where the file manager says what it was to show.
    [[nodiscard]] QString shown() const { return disk.path(QStringLiteral("shown")); }
    [[nodiscard]] QByteArray whatIsShown() const
    {
        QFile file(shown());
        // A busy machine lets a program wait.
        if (!QTest::qWaitFor([&] { return file.open(QIODevice::ReadOnly); }, 30'000))
            return "nothing";
        return file.readAll();
    }
    [[nodiscard]] const QString &home() const { return homeTrash; }

    EntriesOnDisk disk;
    /// There before the entries are read, which begins with them.
    QString fileManager = writeFileManager();
    QByteArray volume;
    QString homeTrash;
    FakeClock clock;
    Bus bus;
    DesktopEntries entries{clock, disk.places()};
    AppStarter starter{entries, bus, clock, {}, nullptr, [] { return quint32(0); }};
    /// What is answered, once it may be.
    std::optional<quint32> count;
    QSemaphore mayAnswer;
    QAtomicInt timesCounted;
    std::unique_ptr<LinuxTrashBin> bin = std::make_unique<LinuxTrashBin>(LinuxTrashBin::Context{.clock = clock,
        .starter = starter,
        .count =
            [this] {
                timesCounted.ref();
                mayAnswer.acquire();
                return count;
            },
        .volumes = [this] { return QList{volume}; },
        .homeTrash = home()});
    QList<bool> answers;
};

} // namespace

class LinuxTrashBinTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whoeverCountsIsBelieved_data()
    {
        QTest::addColumn<quint32>("count");
        QTest::addColumn<bool>("isFull");
        QTest::newRow("none") << quint32(0) << false;
        QTest::newRow("one") << quint32(1) << true;
        QTest::newRow("many") << quint32(7000) << true;
    }

    void whoeverCountsIsBelieved()
    {
        QFETCH(quint32, count);
        QFETCH(bool, isFull);
        Desktop desktop;
        desktop.count = count;
        desktop.throwAway();
        desktop.look();
        desktop.mayAnswer.release();
        QTRY_COMPARE(desktop.answers, QList{isFull});
    }

    void whereNobodyCountsTheFolderIsLookedInto()
    {
        Desktop desktop;
        desktop.mayAnswer.release(3);
        desktop.look();
        QTRY_COMPARE(desktop.answers, QList{false});
        QDir().mkpath(desktop.home() + QStringLiteral("/files"));
        desktop.look();
        QTRY_COMPARE(desktop.answers, (QList{false, false}));
        desktop.throwAway();
        desktop.look();
        QTRY_COMPARE(desktop.answers, (QList{false, false, true}));
    }

    void whoeverCountsHasThreeSeconds()
    {
        Desktop desktop;
        desktop.count = 0;
        desktop.throwAway();
        desktop.look();
        QTRY_COMPARE(desktop.timesCounted.loadAcquire(), 1);
        desktop.clock.advance(2999ms);
        QTest::qWait(50);
        QVERIFY(desktop.answers.isEmpty());
        desktop.clock.advance(1ms);
        QTRY_COMPARE(desktop.answers, QList{true});
        // Until it has answered it is not asked again.
        desktop.look();
        QTRY_COMPARE(desktop.answers, (QList{true, true}));
        QCOMPARE(desktop.timesCounted.loadAcquire(), 1);
        desktop.mayAnswer.release();
        QTest::qWait(50);
        QCOMPARE(desktop.answers.size(), 2);
        desktop.look();
        desktop.mayAnswer.release();
        QTRY_COMPARE(desktop.answers, (QList{true, true, false}));
        QCOMPARE(desktop.timesCounted.loadAcquire(), 2);
    }

    void theTrashOfAVolumeCounts_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<bool>("isSticky");
        QTest::addColumn<bool>("isFull");
        const QString user = QString::number(getuid());
        QTest::newRow("the user's own") << QStringLiteral(".Trash-") + user << false << true;
        QTest::newRow("in the one of all users") << QStringLiteral(".Trash/") + user << true << true;
        QTest::newRow("in one that anybody could have made") << QStringLiteral(".Trash/") + user << false << false;
        QTest::newRow("another user's") << QStringLiteral(".Trash-") + QString::number(getuid() + 1) << true << false;
    }

    void theTrashOfAVolumeCounts()
    {
        QFETCH(QString, place);
        QFETCH(bool, isSticky);
        Desktop desktop;
        const QString volume = desktop.disk.path(QStringLiteral("volume/"));
        desktop.disk.write(volume + place + QStringLiteral("/files/a"), "a");
        if (isSticky && place.contains(u'/'))
            QCOMPARE(chmod(QFile::encodeName(volume + QStringLiteral(".Trash")).constData(), S_IRWXU | S_ISVTX), 0);
        desktop.mayAnswer.release();
        desktop.look();
        QTRY_COMPARE(desktop.answers.size(), 1);
        QTEST(desktop.answers.first(), "isFull");
    }

    void aVolumeThatHangsIsAsItWas()
    {
        const SecondVolume volume;
        const QString trash = volume.source() + QStringLiteral("/.Trash-") + QString::number(getuid());
        Desktop desktop(volume.bytes());
        desktop.mayAnswer.release(100);
        desktop.look();
        QTRY_COMPARE(desktop.answers, QList{false});
        desktop.disk.write(trash + QStringLiteral("/files/a"), "a");
        desktop.look();
        QTRY_COMPARE(desktop.answers, (QList{false, true}));
        volume.hang();
        desktop.look();
        QTest::qWait(100);
        QCOMPARE(desktop.answers.size(), 2);
        desktop.clock.advance(2s);
        QTRY_COMPARE(desktop.answers, (QList{false, true, true}));
        // No longer than that, and the user's own is looked into all the while.
        desktop.look();
        QTRY_COMPARE(desktop.answers, (QList{false, true, true, true}));
        volume.goOn();
        QVERIFY(QDir(trash).removeRecursively());
        const auto looksEmpty = [&] {
            desktop.look();
            return QTest::qWaitFor([&] { return !desktop.answers.last(); }, 100);
        };
        QTRY_VERIFY(looksEmpty());
    }

    void volumesOfTheSystemItselfAreNotLookedAt()
    {
        const SecondVolume volume;
        const QList<QByteArray> mounted = mountedVolumes();
        QVERIFY(mounted.contains(volume.bytes()));
        QVERIFY(mounted.contains("/"));
        QVERIFY(!mounted.contains("/proc"));
    }

    void sevenThousandThingsTakeNoLongerThanOne()
    {
        Desktop desktop;
        desktop.mayAnswer.release(2);
        for (int i = 0; i < 7'000; ++i)
            desktop.disk.write(desktop.home() + QStringLiteral("/files/%1").arg(i), {});
        QElapsedTimer time;
        time.start();
        desktop.look();
        QTRY_COMPARE(desktop.answers, QList{true});
        QVERIFY2(time.elapsed() < 500, qPrintable(QString::number(time.elapsed())));
    }

    void aQuestionUnderALookIsAnsweredByANewOne()
    {
        Desktop desktop;
        desktop.count = 0;
        desktop.look();
        desktop.look();
        QTRY_COMPARE(desktop.timesCounted.loadAcquire(), 1);
        desktop.mayAnswer.release();
        QTRY_COMPARE(desktop.timesCounted.loadAcquire(), 2);
        QCOMPARE(desktop.answers, QList{false});
        desktop.mayAnswer.release();
        QTRY_COMPARE(desktop.answers, (QList{false, false}));
    }

    void whatIsInItIsShownByTheFileManager_data()
    {
        QTest::addColumn<bool>("isCounted");
        QTest::addColumn<bool>("isAllOfIt");
        QTest::newRow("where somebody counts, all of it") << true << true;
        QTest::newRow("where nobody does, what is in the home") << false << false;
    }

    void whatIsInItIsShownByTheFileManager()
    {
        QFETCH(bool, isCounted);
        QFETCH(bool, isAllOfIt);
        Desktop desktop;
        if (isCounted)
            desktop.count = 1;
        desktop.mayAnswer.release();
        desktop.look();
        QTRY_COMPARE(desktop.answers.size(), 1);
        desktop.bin->open();
        const QByteArray folder = QFile::encodeName(desktop.home()) + "/files";
        const QByteArray shown = desktop.whatIsShown();
        if (isAllOfIt)
            QCOMPARE(shown, QByteArray("trash:///"));
        else
            QVERIFY2(shown == folder || shown == "file://" + folder, shown.constData());
        // Nothing was ever thrown away: what is shown is there all the same.
        struct stat facts { };
        QCOMPARE(stat(folder.constData(), &facts) == 0, isAllOfIt == false);
        if (!isAllOfIt)
            QCOMPARE(facts.st_mode, mode_t(S_IFDIR | S_IRWXU));
    }

    void aTrashThatHangsIsShownAllTheSame()
    {
        const SecondVolume volume;
        Desktop desktop(volume.bytes(), volume.path() + QStringLiteral("/Trash"));
        volume.hang();
        desktop.bin->open();
        QTest::qWait(50);
        QVERIFY(!QFile::exists(desktop.shown()));
        desktop.clock.advance(2s);
        QVERIFY(desktop.whatIsShown().endsWith("/volume/Trash/files"));
    }

    void aLookEndsWithTheBin()
    {
        Desktop desktop;
        desktop.look();
        desktop.mayAnswer.release();
        desktop.bin.reset();
        QTest::qWait(50);
        QVERIFY(desktop.answers.isEmpty());
    }
};

MOORLINE_TEST(LinuxTrashBinTest);

} // namespace moorline::test

#include "LinuxTrashBinTest.moc"
