#include "platform/linux/icons/IconThemeFolders.h"

#include "IconsOnDisk.h"
#include "harness/TestCase.h"
#include "platform/linux/icons/IconThemeIndex.h"

#include <unistd.h>

namespace moorline::test {

namespace {

const QString app = QStringLiteral("app");

} // namespace

class IconThemeFoldersTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_disk = std::make_unique<IconsOnDisk>();
    }

    void anIndexIsReadAsItIsWritten()
    {
        const QString path = m_disk->write(QStringLiteral("index.theme"),
            "[Icon Theme]\nName=Own\nInherits=One,Two\nDirectories=a,b, "
            "c,d,../out,/root,nameless\nScaledDirectories=a@2\n"
            "[a]\nSize=48\n"
            "[b]\nSize=64\nType=Scalable\nMinSize=8\nMaxSize=512\n"
            "[c]\nSize=32\nType=Fixed\n"
            "[d]\nSize=22\nThreshold=4\nType=Threshold\nMinSize=-3\nMaxSize=99999999999\n"
            "[../out]\nSize=48\n[/root]\nSize=48\n"
            "[a@2]\nSize=48\nScale=2\n");
        const auto index = readIconThemeIndex(path);
        QVERIFY(index);
        QCOMPARE(index->inherits, (QStringList{QStringLiteral("One"), QStringLiteral("Two")}));
        using Type = IconFolder::Type;
        QCOMPARE(index->folders,
            (QList<IconFolder>{{QStringLiteral("a"), 48, 1, Type::threshold, 48, 48, 2},
                {QStringLiteral("b"), 64, 1, Type::scalable, 8, 512, 2},
                {QStringLiteral("c"), 32, 1, Type::fixed, 32, 32, 2},
                {QStringLiteral("d"), 22, 1, Type::threshold, 0, 22, 4},
                {QStringLiteral("a@2"), 48, 2, Type::threshold, 48, 48, 2}}));
    }

    void whatIsNoIndexIsAbsent()
    {
        QVERIFY(!readIconThemeIndex(m_disk->path(QStringLiteral("missing"))));
        QVERIFY(!readIconThemeIndex(m_disk->write(QStringLiteral("text"), "hello")));
        QVERIFY(!readIconThemeIndex(m_disk->write(QStringLiteral("other"), "[Desktop Entry]\nDirectories=a\n")));
        QVERIFY(!readIconThemeIndex(m_disk->path({})));
    }

    void theThemesOwnIconComesFirstThenThoseItInheritsThenTheLast()
    {
        m_disk->writeTheme(QStringLiteral("system/Own"), {48}, "Parent");
        m_disk->writeTheme(QStringLiteral("system/Parent"), {48}, "Grandparent");
        m_disk->writeTheme(QStringLiteral("system/Grandparent"), {48});
        m_disk->writeTheme(QStringLiteral("system/hicolor"), {48});
        const QStringList themes{
            QStringLiteral("hicolor"), QStringLiteral("Grandparent"), QStringLiteral("Parent"), QStringLiteral("Own")};
        IconThemeFolders folders = reader();
        for (const QString &theme : themes) {
            const QString path = m_disk->writePng(QStringLiteral("system/%1/48x48/apps/app.png").arg(theme), Qt::red);
            QVERIFY(folders.refresh() || theme == themes.first());
            QCOMPARE(folders.find(app, 48, 1), std::optional(path));
        }
    }

    void anIconOfTheThemeIsBetterThanOneOfTheRightSizeInAnother()
    {
        m_disk->writeTheme(QStringLiteral("system/Own"), {16}, "Parent");
        m_disk->writeTheme(QStringLiteral("system/Parent"), {48});
        const QString small = m_disk->writePng(QStringLiteral("system/Own/16x16/apps/app.png"), Qt::red);
        m_disk->writePng(QStringLiteral("system/Parent/48x48/apps/app.png"), Qt::red);
        QCOMPARE(reader().find(app, 48, 1), std::optional(small));
    }

    void theNearestSizeIsTaken()
    {
        m_disk->writeTheme(QStringLiteral("system/Own"), {16, 32, 256});
        const QString small = m_disk->writePng(QStringLiteral("system/Own/16x16/apps/app.png"), Qt::red);
        const QString middle = m_disk->writePng(QStringLiteral("system/Own/32x32/apps/app.png"), Qt::red);
        const QString large = m_disk->writePng(QStringLiteral("system/Own/256x256/apps/app.png"), Qt::red);
        IconThemeFolders folders = reader();
        QCOMPARE(folders.find(app, 22, 1), std::optional(small));
        QCOMPARE(folders.find(app, 46, 1), std::optional(middle));
        QCOMPARE(folders.find(app, 46, 4), std::optional(large));
    }

    void theUsersOwnFolderComesBeforeTheSystems()
    {
        m_disk->writeTheme(QStringLiteral("system/Own"), {48});
        m_disk->writePng(QStringLiteral("system/Own/48x48/apps/app.png"), Qt::red);
        const QString own = m_disk->writePng(QStringLiteral("home/Own/48x48/apps/app.png"), Qt::red);
        QCOMPARE(reader().find(app, 48, 1), std::optional(own));
    }

    void pngComesBeforeSvgBeforeXpm()
    {
        m_disk->writeTheme(QStringLiteral("system/Own"), {48});
        IconThemeFolders folders = reader();
        for (const char *extension : {"xpm", "svg", "png"}) {
            const QString path = m_disk->write(
                QStringLiteral("system/Own/48x48/apps/app.") + QString::fromLatin1(extension), "anything");
            folders.setTheme(QStringLiteral("Own"));
            QCOMPARE(folders.find(app, 48, 1), std::optional(path));
        }
    }

    void anIconOfNoThemeIsTheLastResort()
    {
        m_disk->writeTheme(QStringLiteral("system/Own"), {48});
        const QString loose = m_disk->writePng(QStringLiteral("system/app.png"), Qt::red);
        IconThemeFolders folders = reader();
        QCOMPARE(folders.find(app, 48, 1), std::optional(loose));
        QCOMPARE(folders.find(QStringLiteral("other"), 48, 1), std::nullopt);
    }

    void aThemeThatIsNotInstalledIsReplaced()
    {
        m_disk->writeTheme(QStringLiteral("system/Adwaita"), {48});
        const QString path = m_disk->writePng(QStringLiteral("system/Adwaita/48x48/apps/app.png"), Qt::red);
        IconThemeFolders folders = reader();
        folders.setTheme(QStringLiteral("Gone"));
        QCOMPARE(folders.find(app, 48, 1), std::optional(path));
    }

    void themesThatInheritFromEachOtherEnd()
    {
        m_disk->writeTheme(QStringLiteral("system/Own"), {48}, "Other,Own,hicolor,..,/,");
        m_disk->writeTheme(QStringLiteral("system/Other"), {48}, "Own,Other");
        QCOMPARE(reader().find(app, 48, 1), std::nullopt);
    }

    void foldersThatAreLinkedInACircleAreNoFolders()
    {
        m_disk->writeTheme(QStringLiteral("system/Own"), {48});
        const QString loop = m_disk->path(QStringLiteral("system/Own/48x48"));
        QCOMPARE(::symlink(qPrintable(loop), qPrintable(loop)), 0);
        QCOMPARE(reader().find(app, 48, 1), std::nullopt);
    }

    void whatComesAndGoesIsNoticedOnce()
    {
        m_disk->writeTheme(QStringLiteral("system/Own"), {48});
        m_disk->writePng(QStringLiteral("system/Own/48x48/apps/other.png"), Qt::red);
        IconThemeFolders folders = reader();
        QCOMPARE(folders.find(app, 48, 1), std::nullopt);
        QVERIFY(!folders.refresh());
        const QString path = m_disk->writePng(QStringLiteral("system/Own/48x48/apps/app.png"), Qt::red);
        QVERIFY(folders.refresh());
        QCOMPARE(folders.find(app, 48, 1), std::optional(path));
        QVERIFY(!folders.refresh());
        QVERIFY(QFile::remove(path));
        QVERIFY(folders.refresh());
        QCOMPARE(folders.find(app, 48, 1), std::nullopt);
    }

    void aFolderThatWasNotThereIsNoticed()
    {
        m_disk->writeTheme(QStringLiteral("system/hicolor"), {48});
        IconThemeFolders folders = reader();
        QCOMPARE(folders.find(app, 48, 1), std::nullopt);
        const QString path = m_disk->writePng(QStringLiteral("home/hicolor/48x48/apps/app.png"), Qt::red);
        QVERIFY(folders.refresh());
        QCOMPARE(folders.find(app, 48, 1), std::optional(path));
    }

    void aFolderOfAThemeThatWasNotThereIsNoticed()
    {
        m_disk->writeTheme(QStringLiteral("system/hicolor"), {48, 64});
        m_disk->writePng(QStringLiteral("system/hicolor/64x64/other/app.png"), Qt::red);
        IconThemeFolders folders = reader();
        QCOMPARE(folders.find(app, 48, 1), std::nullopt);
        QVERIFY(!folders.refresh());
        const QString large = m_disk->writePng(QStringLiteral("system/hicolor/64x64/apps/app.png"), Qt::red);
        QVERIFY(folders.refresh());
        QCOMPARE(folders.find(app, 48, 1), std::optional(large));
        QVERIFY(!folders.refresh());
        const QString exact = m_disk->writePng(QStringLiteral("system/hicolor/48x48/apps/app.png"), Qt::red);
        QVERIFY(folders.refresh());
        QCOMPARE(folders.find(app, 48, 1), std::optional(exact));
    }

    void theFoldersThatExistAreToBeWatched()
    {
        m_disk->writeTheme(QStringLiteral("system/hicolor"), {48});
        m_disk->writePng(QStringLiteral("system/hicolor/48x48/apps/app.png"), Qt::red);
        QCOMPARE(reader().watchable(),
            (QStringList{m_disk->path(QStringLiteral("system")), m_disk->path(QStringLiteral("system/hicolor")),
                m_disk->path(QStringLiteral("system/hicolor/48x48/apps"))}));
    }

    void theStandardFoldersAreTheUsersThenTheSystems()
    {
        const QByteArray home = qgetenv("XDG_DATA_HOME");
        const QByteArray system = qgetenv("XDG_DATA_DIRS");
        const auto restore = qScopeGuard([&] {
            home.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", home);
            system.isNull() ? qunsetenv("XDG_DATA_DIRS") : qputenv("XDG_DATA_DIRS", system);
        });
        qputenv("XDG_DATA_HOME", "/own");
        qputenv("XDG_DATA_DIRS", "/first:/second");
        QCOMPARE(IconThemeFolders::standardBases(),
            (QStringList{QDir::homePath() + QStringLiteral("/.icons"), QStringLiteral("/own/icons"),
                QStringLiteral("/first/icons"), QStringLiteral("/second/icons"),
                QStringLiteral("/usr/share/pixmaps")}));
    }

private:
    [[nodiscard]] IconThemeFolders reader() const
    {
        IconThemeFolders folders(m_disk->bases());
        folders.setTheme(QStringLiteral("Own"));
        return folders;
    }

    std::unique_ptr<IconsOnDisk> m_disk;
};

MOORLINE_TEST(IconThemeFoldersTest);

} // namespace moorline::test

#include "IconThemeFoldersTest.moc"
