#include "platform/linux/apps/DesktopEntries.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <sys/stat.h>

namespace {

using moorline::BundleInfo;
using moorline::DesktopEntries;

constexpr int largestEntry = 1024 * 1024;

class DesktopEntriesTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder->filePath(QStringLiteral("home"))));
        qputenv("XDG_DATA_DIRS", QFile::encodeName(m_folder->filePath(QStringLiteral("system"))));
        useLanguage("C");
    }

    void cleanup()
    {
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("XDG_DATA_DIRS");
        useLanguage("C");
        m_folder.reset();
        TestCase::cleanup();
    }

    void applicationsEndInDesktop()
    {
        QCOMPARE(DesktopEntries(m_clock).applicationExtension(), QStringLiteral("desktop"));
    }

    void identifierIsThePathBelowTheApplicationsFolder_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("identifier");

        QTest::newRow("own entry") << QStringLiteral("home/applications/org.example.Editor.desktop")
                                   << QStringLiteral("org.example.Editor");
        QTest::newRow("the system's") << QStringLiteral("system/applications/editor.desktop")
                                      << QStringLiteral("editor");
        QTest::newRow("a sub-folder") << QStringLiteral("system/applications/kde/games/mines.desktop")
                                      << QStringLiteral("kde-games-mines");
        QTest::newRow("elsewhere") << QStringLiteral("somewhere/deep/tool.desktop") << QStringLiteral("tool");
        QTest::newRow("a folder that only begins alike")
            << QStringLiteral("home/applications-old/sub/tool.desktop") << QStringLiteral("tool");
        QTest::newRow("another suffix") << QStringLiteral("somewhere/tool.txt") << QStringLiteral("tool.txt");
        QTest::newRow("a way around") << QStringLiteral("home/applications/kde/../kde/mines.desktop")
                                      << QStringLiteral("kde-mines");
    }

    void identifierIsThePathBelowTheApplicationsFolder()
    {
        QFETCH(QString, path);
        const auto info = infoAt(entry(path, "[Desktop Entry]\nType=Application\nName=Tool\n"));
        QVERIFY(info);
        QTEST(info->identifier.value_or(QString()), "identifier");
    }

    void aLinkedEntryIsIdentifiedByWhereTheLinkIs()
    {
        const QString target =
            entry(QStringLiteral("export/real.desktop"), "[Desktop Entry]\nType=Application\nName=Real\n");
        const QString link = m_folder->filePath(QStringLiteral("home/applications/org.example.Linked.desktop"));
        QVERIFY(QDir().mkpath(m_folder->filePath(QStringLiteral("home/applications"))));
        QVERIFY(QFile::link(target, link));
        const auto info = infoAt(link);
        QVERIFY(info);
        QCOMPARE(info->identifier, QStringLiteral("org.example.Linked"));
        QCOMPARE(info->displayName, QStringLiteral("Real"));
    }

    void displayNameFollowsTheLanguage()
    {
        const QString path = entry(QStringLiteral("files.desktop"),
            "[Desktop Entry]\nType=Application\nName=Files\nName[de]=Dateien\nName[sr@latin]=Datoteke\n");
        QCOMPARE(displayName(path), QStringLiteral("Files"));
        useLanguage("de_AT.UTF-8");
        QCOMPARE(displayName(path), QStringLiteral("Dateien"));
        useLanguage("fr_FR.UTF-8");
        QCOMPARE(displayName(path), QStringLiteral("Files"));
    }

    void genericNameStandsInForAMissingName()
    {
        const auto info =
            infoAt(entry(QStringLiteral("a.desktop"), "[Desktop Entry]\nType=Application\nGenericName=Text Editor\n"));
        QVERIFY(info);
        QCOMPARE(info->displayName, std::nullopt);
        QCOMPARE(info->name, QStringLiteral("Text Editor"));
    }

    void nameIsAbsentBesideADisplayName()
    {
        const auto info = infoAt(
            entry(QStringLiteral("a.desktop"), "[Desktop Entry]\nType=Application\nName=Pad\nGenericName=Editor\n"));
        QVERIFY(info);
        QCOMPARE(info->displayName, QStringLiteral("Pad"));
        QCOMPARE(info->name, std::nullopt);
    }

    void anEmptyNameIsKept()
    {
        const auto info = infoAt(entry(QStringLiteral("a.desktop"), "[Desktop Entry]\nType=Application\nName=\n"));
        QVERIFY(info);
        QCOMPARE(info->displayName, QString());
    }

    void escapesInANameAreResolved()
    {
        const QString path =
            entry(QStringLiteral("a.desktop"), "[Desktop Entry]\nType=Application\nName=Two\\sWords \xC3\xA9\n");
        QCOMPARE(displayName(path), QStringLiteral("Two Words \u00e9"));
    }

    void aNameThatIsNotUtf8IsAbsent()
    {
        const auto info =
            infoAt(entry(QStringLiteral("a.desktop"), "[Desktop Entry]\nType=Application\nName=\xff\xfe\n"));
        QVERIFY(info);
        QCOMPARE(info->displayName, std::nullopt);
    }

    void whatIsNoApplicationEntryIsAbsent_data()
    {
        QTest::addColumn<QByteArray>("content");

        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no group") << QByteArray("Type=Application\nName=Tool\n");
        QTest::newRow("another group") << QByteArray("[Desktop Action new]\nType=Application\nName=Tool\n");
        QTest::newRow("a link") << QByteArray("[Desktop Entry]\nType=Link\nName=Site\nURL=http://example.org\n");
        QTest::newRow("a folder") << QByteArray("[Desktop Entry]\nType=Directory\nName=Games\n");
        QTest::newRow("no type") << QByteArray("[Desktop Entry]\nName=Tool\n");
        QTest::newRow("binary") << QByteArray("\x7f"
                                              "ELF\x02\x01\x01\x00\x00\x00[Desktop Entry]\n",
            24);
        QTest::newRow("a zero byte") << QByteArray("[Desktop Entry]\nType=Application\nName=A\0B\n", 40);
        QTest::newRow("a torn group") << QByteArray("[Desktop Entry\nType=Application\nName=Tool\n");
        QTest::newRow("too large") << "[Desktop Entry]\nType=Application\nName=Tool\n#" + QByteArray(largestEntry, 'x');
        QTest::newRow("one endless line") << QByteArray(largestEntry, '[');
    }

    void whatIsNoApplicationEntryIsAbsent()
    {
        QFETCH(QByteArray, content);
        QVERIFY(!infoAt(entry(QStringLiteral("a.desktop"), content)));
    }

    void theLargestEntryIsRead()
    {
        QByteArray content = "[Desktop Entry]\nType=Application\nName=Tool\n#";
        content.append(QByteArray(largestEntry - content.size(), 'x'));
        QCOMPARE(displayName(entry(QStringLiteral("a.desktop"), content)), QStringLiteral("Tool"));
    }

    void whatIsNoRegularFileIsAbsent()
    {
        const QString fifo = m_folder->filePath(QStringLiteral("fifo.desktop"));
        QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
        const QString folder = m_folder->filePath(QStringLiteral("folder.desktop"));
        QVERIFY(QDir().mkpath(folder));
        const QString dangling = m_folder->filePath(QStringLiteral("dangling.desktop"));
        QVERIFY(QFile::link(m_folder->filePath(QStringLiteral("nowhere")), dangling));
        QVERIFY(!infoAt(fifo));
        QVERIFY(!infoAt(folder));
        QVERIFY(!infoAt(dangling));
        QVERIFY(!infoAt(QStringLiteral("/dev/zero")));
        QVERIFY(!infoAt(QString()));
        QVERIFY(!infoAt(m_folder->filePath(QStringLiteral("missing.desktop"))));
    }

    void aPathWithAZeroCharacterIsAbsent()
    {
        const QString path = entry(QStringLiteral("a.desktop"), "[Desktop Entry]\nType=Application\nName=Tool\n");
        QVERIFY(!infoAt(path + QChar(u'\0') + QStringLiteral(".desktop")));
    }

private:
    /// Writes a file below the test's folder and answers its path.
    QString entry(const QString &relativePath, const QByteArray &content) const
    {
        const QString path = m_folder->filePath(relativePath);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    [[nodiscard]] std::optional<BundleInfo> infoAt(const QString &path)
    {
        DesktopEntries entries(m_clock);
        QCoro::waitFor(entries.lookAt({path}));
        return entries.info(path);
    }

    QString displayName(const QString &path)
    {
        const auto info = infoAt(path);
        return info ? info->displayName.value_or(QString()) : QString();
    }

    /// GLib reads the language from the environment at each question; LC_ALL would win over what the tests run under.
    static void useLanguage(const char *language)
    {
        qputenv("LC_ALL", language);
        qputenv("LANGUAGE", language);
    }

    moorline::test::FakeClock m_clock;
    std::unique_ptr<QTemporaryDir> m_folder;
};

MOORLINE_TEST(DesktopEntriesTest);

} // namespace

#include "DesktopEntriesTest.moc"
