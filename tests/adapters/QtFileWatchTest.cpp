#include "platform/qt/QtFileWatch.h"

#include "harness/TestCase.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

using namespace moorline;
using namespace moorline::test;

namespace {

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void replace(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    QVERIFY(file.commit());
}

} // namespace

class QtFileWatchTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_root = std::make_unique<QTemporaryDir>();
        m_path = m_root->filePath(QStringLiteral("settings.json"));
    }

    void aFileThatIsMadeIsSeen()
    {
        const auto watch = begin(m_path);
        QVERIFY(isSeen([this] { write(m_path, "one"); }));
        QVERIFY(isSeen([this] { write(m_path, "two"); }));
    }

    void aFileThatIsWrittenInPlaceIsSeenEveryTime()
    {
        write(m_path, "one");
        const auto watch = begin(m_path);
        for (const char *bytes : {"two", "three", "four"})
            QVERIFY(isSeen([&] { write(m_path, bytes); }));
    }

    void aFileThatIsReplacedIsSeenEveryTimeAndInPlaceAfterwards()
    {
        write(m_path, "one");
        const auto watch = begin(m_path);
        for (const char *bytes : {"two", "three", "four"})
            QVERIFY(isSeen([&] { replace(m_path, bytes); }));
        QVERIFY(isSeen([this] { write(m_path, "five"); }));
    }

    void aFileThatIsRemovedAndComesBackIsSeen()
    {
        write(m_path, "one");
        const auto watch = begin(m_path);
        QVERIFY(isSeen([this] { QVERIFY(QFile::remove(m_path)); }));
        QVERIFY(isSeen([this] { write(m_path, "two"); }));
        QVERIFY(isSeen([this] { write(m_path, "three"); }));
    }

    void theEndOfALinkIsWatched()
    {
        QVERIFY(QDir(m_root->path()).mkdir(QStringLiteral("elsewhere")));
        const QString target = m_root->filePath(QStringLiteral("elsewhere/settings"));
        write(target, "one");
        QVERIFY(QFile::link(target, m_path));
        const auto watch = begin(m_path);
        QVERIFY(isSeen([&] { write(target, "two"); }));
        QVERIFY(isSeen([&] { replace(target, "three"); }));
        QVERIFY(isSeen([&] { replace(target, "four"); }));
    }

    void theEndOfAChainOfLinksIsWatched()
    {
        const QString target = m_root->filePath(QStringLiteral("far/settings"));
        const QString between = m_root->filePath(QStringLiteral("near/link"));
        makeFolder(QStringLiteral("far"));
        makeFolder(QStringLiteral("near"));
        write(target, "one");
        QVERIFY(QFile::link(target, between));
        QVERIFY(QFile::link(between, m_path));
        const auto watch = begin(m_path);
        QVERIFY(isSeen([&] { write(target, "two"); }));
        QVERIFY(isSeen([&] { replace(target, "three"); }));
        // A link that leads elsewhere from now on.
        const QString other = m_root->filePath(QStringLiteral("far/other"));
        write(other, "four");
        QVERIFY(isSeen([&] { QVERIFY(QFile::remove(between) && QFile::link(other, between)); }));
        QVERIFY(isSeen([&] { write(other, "five"); }));
    }

    void theEndOfALinkedFolderIsWatched()
    {
        makeFolder(QStringLiteral("elsewhere"));
        makeFolder(QStringLiteral("other"));
        const QString link = m_root->filePath(QStringLiteral("folder"));
        QVERIFY(QFile::link(m_root->filePath(QStringLiteral("elsewhere")), link));
        const auto watch = begin(link + QStringLiteral("/settings.json"));
        const QString target = m_root->filePath(QStringLiteral("elsewhere/settings.json"));
        QVERIFY(isSeen([&] { write(target, "one"); }));
        QVERIFY(isSeen([&] { replace(target, "two"); }));
        QVERIFY(isSeen([&] { QVERIFY(QDir(m_root->filePath(QStringLiteral("elsewhere"))).removeRecursively()); }));
        QVERIFY(isSeen([&] {
            makeFolder(QStringLiteral("elsewhere"));
            write(target, "three");
        }));
        QVERIFY(isSeen([&] { write(target, "four"); }));
        QVERIFY(isSeen(
            [&] { QVERIFY(QFile::remove(link) && QFile::link(m_root->filePath(QStringLiteral("other")), link)); }));
        QVERIFY(isSeen([&] { write(m_root->filePath(QStringLiteral("other/settings.json")), "five"); }));
    }

    void linksInACircleAreSurvived()
    {
        QVERIFY(QFile::link(m_path, m_path));
        const auto watch = begin(m_path);
        QVERIFY(isSeen([this] {
            QVERIFY(QFile::remove(m_path));
            write(m_path, "one");
        }));
    }

    void aFolderThatIsRemovedAndMadeAnewIsWatched()
    {
        const QString path = m_root->filePath(QStringLiteral("a/b/settings.json"));
        makeFolder(QStringLiteral("a/b"));
        write(path, "one");
        const auto watch = begin(path);
        for (const char *removed : {"a/b", "a", "a/b"}) {
            QVERIFY(isSeen([&] { QVERIFY(QDir(m_root->filePath(QLatin1StringView(removed))).removeRecursively()); }));
            QVERIFY(isSeen([&] {
                makeFolder(QStringLiteral("a/b"));
                write(path, "two");
            }));
            QVERIFY(isSeen([&] { write(path, "three"); }));
            QVERIFY(isSeen([&] { replace(path, "four"); }));
        }
    }

    void aFolderThatIsNotThereYetIsWaitedFor()
    {
        const QString path = m_root->filePath(QStringLiteral("a/b/settings.json"));
        const auto watch = begin(path);
        QVERIFY(isSeen([&] { makeFolder(QStringLiteral("a")); }));
        QVERIFY(isSeen([&] { makeFolder(QStringLiteral("a/b")); }));
        QVERIFY(isSeen([&] { write(path, "one"); }));
        QVERIFY(isSeen([&] { write(path, "two"); }));
    }

    void anotherFolderPutInItsPlaceIsWatched()
    {
        const QString path = m_root->filePath(QStringLiteral("folder/settings.json"));
        makeFolder(QStringLiteral("folder"));
        makeFolder(QStringLiteral("other"));
        write(m_root->filePath(QStringLiteral("other/settings.json")), "one");
        const auto watch = begin(path);
        QDir root(m_root->path());
        QVERIFY(isSeen([&] { QVERIFY(root.rename(QStringLiteral("folder"), QStringLiteral("old"))); }));
        QVERIFY(isSeen([&] { QVERIFY(root.rename(QStringLiteral("other"), QStringLiteral("folder"))); }));
        QVERIFY(isSeen([&] { write(path, "two"); }));
        QVERIFY(!isSeen([&] { write(m_root->filePath(QStringLiteral("old/settings.json")), "three"); }, 200));
    }

    void whatHappensBesideTheFolderIsNoNews()
    {
        makeFolder(QStringLiteral("folder"));
        const auto watch = begin(m_root->filePath(QStringLiteral("folder/settings.json")));
        QVERIFY(!isSeen([&] { write(m_root->filePath(QStringLiteral("beside")), "one"); }, 200));
    }

    void anEndedWatchIsSilent()
    {
        auto watch = begin(m_path);
        watch.reset();
        QVERIFY(!isSeen([this] { write(m_path, "one"); }, 200));
    }

private:
    void makeFolder(const QString &path) const { QVERIFY(QDir(m_root->path()).mkpath(path)); }

    std::unique_ptr<FileWatch::Watch> begin(const QString &path)
    {
        return m_fileWatch.watch(path, [this] { ++m_times; });
    }

    template <typename Change>
    [[nodiscard]] bool isSeen(Change change, int timeout = 5000)
    {
        // What is still to be told of the change before is not this one.
        QTest::qWait(20);
        m_times = 0;
        change();
        return QTest::qWaitFor([this] { return m_times > 0; }, timeout);
    }

    QtFileWatch m_fileWatch;
    std::unique_ptr<QTemporaryDir> m_root;
    QString m_path;
    int m_times = 0;
};

MOORLINE_TEST(QtFileWatchTest);

#include "QtFileWatchTest.moc"
