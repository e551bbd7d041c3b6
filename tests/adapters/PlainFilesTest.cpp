#include "platform/linux/desktop/PlainFiles.h"

#include "SecondVolume.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/Bus.h"
#include "support/FileUrls.h"

#include <QThread>
#include <QTimer>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace moorline;

namespace {

/// Root may read everything: as long as this lives, the program is somebody else's.
class OrdinaryUser final {
public:
    OrdinaryUser()
    {
        constexpr uid_t nobody = 65'534;
        if (m_user == 0 && seteuid(nobody) != 0)
            qFatal("cannot be somebody else");
    }
    ~OrdinaryUser()
    {
        if (seteuid(m_user) != 0)
            qFatal("cannot be who it was");
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

private:
    uid_t m_user = geteuid();
};

} // namespace

class PlainFilesTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFileIsShownUnderTheLastPartOfItsPath_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        const auto row = [](const char *name, const QString &path, const QString &expected) {
            QTest::newRow(name) << path << expected;
        };
        row("a file", QStringLiteral("/nowhere/letter.txt"), QStringLiteral("letter.txt"));
        row("without an extension", QStringLiteral("/nowhere/letter"), QStringLiteral("letter"));
        row("hidden", QStringLiteral("/nowhere/.profile"), QStringLiteral(".profile"));
        row("several dots", QStringLiteral("/nowhere/a.tar.gz"), QStringLiteral("a.tar.gz"));
        row("spaces", QStringLiteral("/no where/ a letter "), QStringLiteral(" a letter "));
        row("beyond ASCII", QStringLiteral("/nowhere/日本 Grüße"), QStringLiteral("日本 Grüße"));
        row("a folder", QStringLiteral("/nowhere/folder/"), QStringLiteral("folder"));
        row("slashes behind", QStringLiteral("/nowhere/folder///"), QStringLiteral("folder"));
        row("slashes within", QStringLiteral("/nowhere//letter"), QStringLiteral("letter"));
        row("a bare name", QStringLiteral("letter"), QStringLiteral("letter"));
        row("dots alone", QStringLiteral("/nowhere/.."), QStringLiteral(".."));
        row("the root", QStringLiteral("/"), QStringLiteral("/"));
        row("the root, often", QStringLiteral("//"), QStringLiteral("/"));
        row("nothing", QString(), QString());
    }

    void aFileIsShownUnderTheLastPartOfItsPath()
    {
        QFETCH(QString, path);
        QTEST(PlainFiles(m_clock, m_bus).displayName(path), "name");
    }

    void whatIsThereHasTheSameName()
    {
        const QTemporaryDir root;
        const QString folder = root.filePath(QStringLiteral("folder"));
        const QString link = root.filePath(QStringLiteral("link"));
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(QFile::link(folder, link));
        QCOMPARE(PlainFiles(m_clock, m_bus).displayName(folder), QStringLiteral("folder"));
        QCOMPARE(PlainFiles(m_clock, m_bus).displayName(link), QStringLiteral("link"));
    }

    /// A desktop entry is a file as any other here: pinned as a file, it keeps its name.
    void aDesktopEntryKeepsTheNameOfItsFile()
    {
        const QTemporaryDir root;
        const QString path = root.filePath(QStringLiteral("editor.desktop"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nName=Editor\nExec=true\n");
        file.close();
        QCOMPARE(PlainFiles(m_clock, m_bus).displayName(path), QStringLiteral("editor.desktop"));
    }

    void aFolderIsListedByTheBytesOfItsNames()
    {
        const QTemporaryDir root;
        for (const QByteArray &name :
            {QByteArray("a b"), QByteArray("\xff"), QByteArray(".hidden"), QByteArray("l\nf")})
            write(root, name);
        QVERIFY(QDir(root.path()).mkpath(QStringLiteral("folder/inside")));
        QVERIFY(QFile::link(QStringLiteral("/nowhere"), root.filePath(QStringLiteral("link"))));
        const auto found = listed(root.path());
        QVERIFY(found);
        QMap<QByteArray, bool> hidden;
        for (const FolderEntry &entry : *found)
            hidden.insert(entry.name, entry.isHidden);
        QCOMPARE(hidden,
            (QMap<QByteArray, bool>{{"a b", false}, {"\xff", false}, {".hidden", true}, {"l\nf", false},
                {"folder", false}, {"link", false}}));
        // What is no text only its bytes remove.
        QCOMPARE(unlink((QFile::encodeName(root.path()) + "/\xff").constData()), 0);
    }

    void whatIsMadeNowCameNowAndWhatWasMovedThereAsWell()
    {
        const QTemporaryDir root;
        const auto before = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
        const QByteArray path = write(root, "new");
        const timespec longAgo[] = {{.tv_sec = 1'000'000, .tv_nsec = 0}, {.tv_sec = 1'000'000, .tv_nsec = 0}};
        QCOMPARE(utimensat(AT_FDCWD, path.constData(), longAgo, 0), 0);
        const auto found = listed(root.path());
        QVERIFY(found && found->size() == 1);
        QCOMPARE(found->first().modified, std::optional<FolderEntry::Time>(std::chrono::seconds(1'000'000)));
        // Not every file system keeps the birth of a file.
        struct statx facts { };
        QCOMPARE(statx(AT_FDCWD, path.constData(), 0, STATX_BTIME, &facts), 0);
        QCOMPARE(found->first().added.has_value(), (facts.stx_mask & STATX_BTIME) != 0);
        if (found->first().added)
            QVERIFY(*found->first().added >= before);
    }

    void aFolderThatIsNotThereCannotBeRead()
    {
        QCOMPARE(listed(QStringLiteral("/nowhere")), std::nullopt);
        const QTemporaryDir root;
        QCOMPARE(listed(QFile::decodeName(write(root, "file"))), std::nullopt);
        const auto empty = listed(root.filePath(QStringLiteral(".")));
        QVERIFY(empty && empty->size() == 1);
    }

    void aFolderThatNobodyMayReadCannotBeRead()
    {
        const QTemporaryDir root;
        QCOMPARE(chmod(QFile::encodeName(root.path()).constData(), 0755), 0);
        QVERIFY(QDir(root.path()).mkdir(QStringLiteral("locked")));
        QVERIFY(QFile::setPermissions(root.filePath(QStringLiteral("locked")), {}));
        const OrdinaryUser user;
        QVERIFY(listed(root.path()));
        QCOMPARE(listed(root.filePath(QStringLiteral("locked"))), std::nullopt);
    }

    void whatIsWantedIsChosenOnAnotherThread()
    {
        const QTemporaryDir root;
        write(root, "a");
        write(root, "b");
        PlainFiles files(m_clock, m_bus);
        QThread *chooser = nullptr;
        std::optional<qsizetype> count;
        files.list(
            root.path(),
            [&](QList<FolderEntry> entries) {
                chooser = QThread::currentThread();
                return entries.mid(0, 1);
            },
            [&](const auto &found) { count = found ? found->size() : -1; });
        QVERIFY(!count);
        QTRY_COMPARE(count, std::optional<qsizetype>(1));
        QVERIFY(chooser && chooser != QThread::currentThread());
    }

    void ofAFolderWithVeryManyFilesThoseAreChosenThatAreWanted()
    {
        const QTemporaryDir root(QStringLiteral("/dev/shm/XXXXXX"));
        constexpr int count = 100'000;
        for (int i = 0; i < count; ++i)
            write(root, QByteArray::number(i));
        PlainFiles files(m_clock, m_bus);
        std::optional<qsizetype> seen;
        std::optional<QList<FolderEntry>> chosen;
        // Those who wait for events go on meanwhile.
        int turns = 0;
        QTimer ticks;
        connect(&ticks, &QTimer::timeout, this, [&turns] { ++turns; });
        ticks.start(1);
        files.list(
            root.path(),
            [&](QList<FolderEntry> entries) {
                seen = entries.size();
                return entries.mid(0, 12);
            },
            [&](const auto &found) { chosen = found; });
        QTRY_VERIFY_WITH_TIMEOUT(chosen, 60'000);
        QVERIFY2(turns > 5, qPrintable(QString::number(turns)));
        QCOMPARE(seen, std::optional<qsizetype>(count));
        QCOMPARE(chosen->size(), 12);
    }

    void aFolderThatVanishesUnderTheReaderDoesNoHarm()
    {
        for (int round = 0; round < 5; ++round) {
            const QTemporaryDir root;
            const QString folder = root.filePath(QStringLiteral("folder"));
            QDir().mkdir(folder);
            for (int i = 0; i < 2'000; ++i)
                QFile::link(QStringLiteral("/nowhere"), folder + u'/' + QString::number(i));
            std::thread remover([folder] { QDir(folder).removeRecursively(); });
            const auto found = listed(folder);
            remover.join();
            for (const FolderEntry &entry : found.value_or(QList<FolderEntry>()))
                QVERIFY(entry.name.toInt() < 2'000 && !entry.name.isEmpty());
            QCOMPARE(listed(folder), std::nullopt);
        }
    }

    void whatIsThrownAwayIsInTheTrash_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("a file") << QByteArray("thrown away");
        QTest::newRow("a name that is no text") << QByteArray("caf\xe9");
    }

    void whatIsThrownAwayIsInTheTrash()
    {
        QFETCH(QByteArray, name);
        const QTemporaryDir root(besideTheTrash());
        const QByteArray path = write(root, name);
        QCOMPARE(thrownAway(fileUrl(path)), std::optional(true));
        QVERIFY(!QFile::exists(QFile::decodeName(path)) && access(path.constData(), F_OK) != 0);
        QVERIFY(access((trash() + "/files/" + name).constData(), F_OK) == 0);
        QVERIFY(access((trash() + "/info/" + name + ".trashinfo").constData(), F_OK) == 0);
    }

    void aFolderIsThrownAwayWithWhatIsInIt()
    {
        const QTemporaryDir root(besideTheTrash());
        QVERIFY(QDir(root.path()).mkpath(QStringLiteral("folder/inside")));
        QCOMPARE(thrownAway(QUrl::fromLocalFile(root.filePath(QStringLiteral("folder")))), std::optional(true));
        QVERIFY(!QFile::exists(root.filePath(QStringLiteral("folder"))));
        QVERIFY(QFile::exists(QFile::decodeName(trash()) + QStringLiteral("/files/folder/inside")));
    }

    void aFileOfAnotherVolumeGoesIntoTheTrashThatIsThere()
    {
        const test::SecondVolume volume;
        write(volume.path(), "caf\xe9 %");
        QCOMPARE(thrownAway(fileUrl(volume.bytes() + "/caf\xe9 %")), std::optional(true));
        const QByteArray place = volume.bytes() + "/.Trash-" + QByteArray::number(getuid());
        QVERIFY(access((place + "/files/caf\xe9 %").constData(), F_OK) == 0);
        const QByteArray noted = contentOf(place + "/info/caf\xe9 %.trashinfo");
        QVERIFY2(noted.contains("Path=caf%E9%20%25\n"), noted.constData());
        QVERIFY(access((volume.bytes() + "/caf\xe9 %").constData(), F_OK) != 0);
        QCOMPARE(unlink((place + "/files/caf\xe9 %").constData()), 0);
        QCOMPARE(unlink((place + "/info/caf\xe9 %.trashinfo").constData()), 0);
    }

    void whatNothingCanBeWrittenBesideStays()
    {
        const test::SecondVolume volume({QStringLiteral("-r")});
        write(volume.source(), "letter");
        QCOMPARE(thrownAway(fileUrl(volume.bytes() + "/letter")), std::optional(false));
        QVERIFY(access((volume.bytes() + "/letter").constData(), F_OK) == 0);
    }

    void whatCannotBeThrownAwayStays()
    {
        QCOMPARE(thrownAway(QUrl(QStringLiteral("file:///nowhere"))), std::optional(false));
        // There is no trash for what the kernel makes up.
        QCOMPARE(thrownAway(QUrl(QStringLiteral("file:///proc/version"))), std::optional(false));
        QVERIFY(QFile::exists(QStringLiteral("/proc/version")));
        // Nor in memory: what is moved nowhere is not erased in its place.
        QVERIFY(QDir(QStringLiteral("/dev/shm")).exists());
        const QTemporaryDir memory(QStringLiteral("/dev/shm/XXXXXX"));
        const QByteArray path = write(memory, "letter");
        QCOMPARE(thrownAway(fileUrl(path)), std::optional(false));
        QVERIFY(access(path.constData(), F_OK) == 0);
    }

    void cleanupTestCase() { QDir(QFile::decodeName(trash())).removeRecursively(); }

private:
    /// On the same volume.
    static QString besideTheTrash()
    {
        const QString data = qEnvironmentVariable("XDG_DATA_HOME");
        QDir().mkpath(data);
        return data + QStringLiteral("/XXXXXX");
    }
    static QByteArray trash() { return qgetenv("XDG_DATA_HOME") + "/Trash"; }

    static QByteArray contentOf(const QByteArray &path)
    {
        QByteArray content(4096, '\0');
        const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
        const ssize_t length = ::read(file, content.data(), size_t(content.size()));
        ::close(file);
        return content.left(std::max<qsizetype>(length, 0));
    }

    static QByteArray write(const QTemporaryDir &folder, const QByteArray &name) { return write(folder.path(), name); }
    static QByteArray write(const QString &folder, const QByteArray &name)
    {
        const QByteArray path = QFile::encodeName(folder) + '/' + name;
        const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (file < 0)
            qFatal("cannot write %s", path.constData());
        ::close(file);
        return path;
    }

    std::optional<QList<FolderEntry>> listed(const QString &folder)
    {
        PlainFiles files(m_clock, m_bus);
        std::optional<std::optional<QList<FolderEntry>>> answer;
        files.list(
            folder, [](QList<FolderEntry> entries) { return entries; }, [&](const auto &found) { answer = found; });
        if (!QTest::qWaitFor([&] { return answer.has_value(); }))
            qFatal("no answer");
        return *answer;
    }

    std::optional<bool> thrownAway(const QUrl &file)
    {
        PlainFiles files(m_clock, m_bus);
        std::optional<bool> answer;
        files.moveToTrash(file, [&](bool succeeded) { answer = succeeded; });
        static_cast<void>(QTest::qWaitFor([&] { return answer.has_value(); }));
        return answer;
    }

    test::FakeClock m_clock;
    Bus m_bus;
};

MOORLINE_TEST(PlainFilesTest);
#include "PlainFilesTest.moc"
