#include "files/ScriptedTrashBin.h"

#include "fakes/FakeClock.h"
#include "fakes/FakeFiles.h"
#include "fakes/TemporaryDirectories.h"
#include "harness/TestCase.h"
#include "system/AppleScriptRunner.h"
#include "system/Programs.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// Finder's script host is a program of the test's.
struct Finder {
    explicit Finder(const QByteArray &script)
        : scripts(clock, programs.addRecorder("osascript", script))
    {
    }

    void look()
    {
        bin->look([this](bool isFull) { answers.append(isFull); });
    }
    /// Looks, and hears nothing of Finder.
    void lookInVain()
    {
        look();
        QTRY_COMPARE(files.listings.size(), 1);
        QCOMPARE(files.listings.first().folder, QStringLiteral("/home/me/.Trash"));
    }

    Programs programs;
    FakeClock clock;
    FakeFiles files;
    TemporaryDirectories directories;
    AppleScriptRunner scripts;
    std::unique_ptr<ScriptedTrashBin> bin = std::make_unique<ScriptedTrashBin>(
        ScriptedTrashBin::Context{.scripts = scripts, .files = files, .directories = directories});
    QList<bool> answers;
};

} // namespace

class ScriptedTrashBinTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void finderCounts_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<bool>("isFull");
        QTest::newRow("none") << QByteArray("echo 0") << false;
        QTest::newRow("one") << QByteArray("echo 1") << true;
        QTest::newRow("many") << QByteArray("echo 7000") << true;
    }

    void finderCounts()
    {
        QFETCH(QByteArray, script);
        QFETCH(bool, isFull);
        Finder finder(script);
        finder.look();
        QTRY_COMPARE(finder.answers, QList{isFull});
        QVERIFY(finder.files.listings.isEmpty());
        QCOMPARE(finder.programs.recorded("osascript"),
            QStringLiteral("<-e>\n<tell application \"Finder\" to return count of items in trash>\n"));
    }

    void whereItCannotTheFolderIsLookedInto_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("refused") << QByteArray("exit 1");
        QTest::newRow("no number") << QByteArray("echo several");
        QTest::newRow("a number and more") << QByteArray("echo 1 item");
        QTest::newRow("nothing") << QByteArray("true");
    }

    void whereItCannotTheFolderIsLookedInto()
    {
        QFETCH(QByteArray, script);
        Finder finder(script);
        finder.lookInVain();
        QVERIFY(finder.answers.isEmpty());
        QVERIFY(finder.files.answer(QList{FolderEntry{.name = "a"}}));
        QCOMPARE(finder.answers, QList{true});
    }

    void whatFinderNotesThereIsNothingThrownAway()
    {
        Finder finder("exit 1");
        finder.lookInVain();
        QVERIFY(finder.files.answer(QList{FolderEntry{.name = ".DS_Store", .isHidden = true}}));
        finder.lookInVain();
        QVERIFY(finder.files.answer(
            QList{FolderEntry{.name = ".DS_Store", .isHidden = true}, FolderEntry{.name = ".a", .isHidden = true}}));
        QCOMPARE(finder.answers, (QList{false, true}));
    }

    void aFolderThatCannotBeReadIsEmpty()
    {
        Finder finder("exit 1");
        finder.lookInVain();
        QVERIFY(finder.files.answer(std::nullopt));
        QCOMPARE(finder.answers, QList{false});
    }

    void finderHasThreeSeconds()
    {
        Finder finder("exec >&- 2>&-; touch \"$home/there\"; exec sleep 60");
        finder.look();
        QTRY_VERIFY(finder.programs.exists("there"));
        QTRY_COMPARE(finder.clock.runningTimers(), 1);
        finder.clock.advance(2999ms);
        QVERIFY(finder.files.listings.isEmpty());
        finder.clock.advance(1ms);
        QCOMPARE(finder.files.listings.size(), 1);
        QTRY_VERIFY(!Programs::areRunning());
    }

    void itIsOpenedByFinder()
    {
        Finder finder("true");
        finder.bin->open();
        QTRY_VERIFY(!Programs::areRunning() && finder.programs.exists("osascript.log"));
        QCOMPARE(finder.programs.recorded("osascript"),
            QStringLiteral("<-e>\n<tell application \"Finder\"\n    activate\n    open trash\nend tell>\n"));
    }

    void aLookMayOutliveTheBin()
    {
        Finder finder("exit 1");
        finder.look();
        finder.bin.reset();
        QTRY_VERIFY(!Programs::areRunning());
        QCoreApplication::processEvents();
        QVERIFY(finder.files.listings.isEmpty());
        QVERIFY(finder.answers.isEmpty());
    }
};

MOORLINE_TEST(ScriptedTrashBinTest);
#include "ScriptedTrashBinTest.moc"
