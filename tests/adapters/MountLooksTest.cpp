#include "platform/linux/desktop/MountLooks.h"

#include "SecondVolume.h"
#include "fakes/FakeClock.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>
#include <sys/stat.h>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

/// Two mounts, "a" and "b", and looks at them that begin when they may.
struct Looks {
    void look(const QByteArray &path)
    {
        looks->run<QByteArray>(
            path,
            [path, begun = begun, mayAnswer = mayAnswer] {
                begun->ref();
                if (path.startsWith("/a"))
                    mayAnswer->acquire();
                return path;
            },
            [this](const std::optional<QByteArray> &answer) { answers.append(answer.value_or("nothing")); });
    }

    FakeClock clock;
    MountTable table = MountTable::parse("1 0 0:1 / / rw\n2 1 0:2 / /a rw\n3 1 0:3 / /b rw\n");
    /// A look that hangs outlives its test, and has these for as long.
    std::shared_ptr<QSemaphore> mayAnswer = std::make_shared<QSemaphore>();
    std::shared_ptr<QAtomicInt> begun = std::make_shared<QAtomicInt>();
    QList<QByteArray> answers;
    std::unique_ptr<MountLooks> looks = std::make_unique<MountLooks>(clock, [this] { return table; });
};

bool isThere(const QByteArray &path)
{
    struct stat facts { };
    return stat(path.constData(), &facts) == 0;
}

} // namespace

class MountLooksTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void itLooksOnAnotherThreadAndTellsOnThisOne()
    {
        FakeClock clock;
        MountLooks looks(clock);
        std::optional<QThread *> looking;
        QThread *told = nullptr;
        looks.run<QThread *>(
            "/", [] { return QThread::currentThread(); },
            [&](const std::optional<QThread *> &answer) {
                looking = answer;
                told = QThread::currentThread();
            });
        QVERIFY(!told);
        QTRY_COMPARE(told, QThread::currentThread());
        QVERIFY(looking && *looking != told);
        QCOMPARE(clock.runningTimers(), 0);
    }

    void aMountHasTwoSeconds()
    {
        Looks looks;
        looks.look("/a/1");
        looks.look("/a/2");
        QTRY_COMPARE(looks.begun->loadAcquire(), 1);
        looks.clock.advance(1999ms);
        looks.look("/b/1");
        QTRY_COMPARE(looks.answers, QList<QByteArray>{"/b/1"});
        looks.clock.advance(1ms);
        QCOMPARE(looks.answers, (QList<QByteArray>{"/b/1", "nothing", "nothing"}));
        looks.mayAnswer->release();
    }

    void oneThatHangsHoldsOneLookAndNoMore()
    {
        Looks looks;
        QSignalSpy answered(looks.looks.get(), &MountLooks::answeredAtLast);
        looks.look("/a/1");
        looks.look("/a/2");
        looks.clock.advance(2s);
        looks.answers.clear();
        looks.look("/a/3");
        QVERIFY(looks.answers.isEmpty());
        QTRY_COMPARE(looks.answers, QList<QByteArray>{"nothing"});
        QTRY_COMPARE(looks.begun->loadAcquire(), 1);
        looks.look("/b/1");
        QTRY_COMPARE(looks.answers.size(), 2);
        QCOMPARE(looks.begun->loadAcquire(), 2);
        // It answers after all.
        looks.mayAnswer->release();
        QTRY_COMPARE(answered.size(), 1);
        QCOMPARE(looks.answers.size(), 2);
        looks.mayAnswer->release();
        looks.look("/a/4");
        QTRY_COMPARE(looks.answers.last(), QByteArray("/a/4"));
    }

    void whatIsMountedInItsPlaceIsLookedAt()
    {
        Looks looks;
        looks.look("/a/1");
        looks.clock.advance(2s);
        looks.table = MountTable::parse("1 0 0:1 / / rw\n9 1 0:9 / /a rw\n");
        looks.mayAnswer->release();
        looks.look("/a/2");
        looks.mayAnswer->release();
        QTRY_COMPARE(looks.answers, (QList<QByteArray>{"nothing", "/a/2"}));
    }

    void theEndDoesNotWaitForWhatHangs()
    {
        Looks looks;
        looks.look("/a/1");
        QTRY_COMPARE(looks.begun->loadAcquire(), 1);
        looks.clock.advance(2s);
        QElapsedTimer time;
        time.start();
        looks.looks.reset();
        QVERIFY2(time.elapsed() < 250, qPrintable(QString::number(time.elapsed())));
        looks.mayAnswer->release();
        QTest::qWait(50);
        QCOMPARE(looks.answers, QList<QByteArray>{"nothing"});
    }

    void whoeverIsToldMayEndIt()
    {
        Looks looks;
        int told = 0;
        for (int i = 0; i < 2; ++i) {
            looks.looks->run<bool>(
                "/a",
                [mayAnswer = looks.mayAnswer] {
                    mayAnswer->acquire();
                    return true;
                },
                [&](const std::optional<bool> &) {
                    ++told;
                    looks.looks.reset();
                });
        }
        looks.clock.advance(2s);
        QCOMPARE(told, 1);
        looks.mayAnswer->release();
        QTest::qWait(50);
    }

    void aPathLeavesItsMountOverALink_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("beyond");
        QTest::newRow("no link") << QByteArray("/one/file") << QByteArray();
        QTest::newRow("nothing there") << QByteArray("/one/none/file") << QByteArray();
        QTest::newRow("a link within") << QByteArray("/one/within") << QByteArray();
        QTest::newRow("a link to another mount") << QByteArray("/one/across") << QByteArray("/two/file");
        QTest::newRow("a folder there") << QByteArray("/one/folder/file") << QByteArray("/two/file");
        QTest::newRow("by its own words") << QByteArray("/one/relative") << QByteArray("/two");
        QTest::newRow("links over links") << QByteArray("/one/twice") << QByteArray("/two/file");
        QTest::newRow("in a circle") << QByteArray("/one/circle") << QByteArray();
    }

    void aPathLeavesItsMountOverALink()
    {
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, beyond);
        const QTemporaryDir disk;
        const QString root = QDir(disk.path()).canonicalPath();
        const auto at = [&](const char *name) { return root + QString::fromLatin1(name); };
        QVERIFY(QDir().mkpath(at("/one")) && QDir().mkpath(at("/two")));
        QFile::link(at("/one/file"), at("/one/within"));
        QFile::link(at("/two/file"), at("/one/across"));
        QFile::link(at("/two"), at("/one/folder"));
        QFile::link(QStringLiteral("../two"), at("/one/relative"));
        QFile::link(QStringLiteral("./across"), at("/one/twice"));
        QFile::link(at("/one/circle"), at("/one/circle"));
        const QByteArray top = QFile::encodeName(root);
        const MountTable table =
            MountTable::parse("1 0 0:1 / / rw\n2 1 0:2 / " + top + "/one rw\n3 1 0:3 / " + top + "/two rw\n");
        const QByteArray found = pathBeyond(top + path, table.at(top + path), table);
        QVERIFY(beyond.isEmpty() ? found.isEmpty() : found.startsWith(top));
        QCOMPARE(beyond.isEmpty() ? found : QDir::cleanPath(QFile::decodeName(found)).toUtf8(),
            beyond.isEmpty() ? beyond : top + beyond);
    }

    void aVolumeThatHangsKeepsNobodyFromTheOthers()
    {
        FakeClock clock;
        const SecondVolume volume;
        const QTemporaryDir disk;
        const QByteArray link = QFile::encodeName(disk.filePath(QStringLiteral("link")));
        QVERIFY(QFile::link(volume.path() + QStringLiteral("/file"), QFile::decodeName(link)));
        MountLooks looks(clock);
        QSignalSpy answered(&looks, &MountLooks::answeredAtLast);
        QHash<QByteArray, std::optional<bool>> answers;
        const auto look = [&](const QByteArray &path) {
            looks.run<bool>(
                path, [path] { return isThere(path); }, [&, path](const auto &is) { answers[path] = is; });
        };
        volume.hang();
        look(volume.bytes() + "/file");
        look(link);
        look("/proc/version");
        look("/usr");
        QTRY_COMPARE(answers.value("/usr"), std::optional(true));
        QTRY_COMPARE(answers.value("/proc/version"), std::optional(true));
        // The link was followed to where it hangs.
        QTest::qWait(100);
        clock.advance(2s);
        QTRY_COMPARE(answers.size(), 4);
        QCOMPARE(answers.value(link), std::nullopt);
        look("/bin/sh");
        QTRY_COMPARE(answers.value("/bin/sh"), std::optional(true));
        volume.goOn();
        QTRY_COMPARE(answered.size(), 1);
        look(link);
        QTRY_COMPARE(answers.value(link), std::optional(false));
    }
};

MOORLINE_TEST(MountLooksTest);

} // namespace moorline::test

#include "MountLooksTest.moc"
