#include "apps/Launching.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

const QString notesPath = QStringLiteral("/Applications/My Notes.app");

QString text(const char *characters)
{
    return QString::fromUtf8(characters);
}

} // namespace

class AppLauncherTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void shortcutIsNamedByWhatTheBundleSays_data()
    {
        QTest::addColumn<std::optional<QString>>("displayName");
        QTest::addColumn<std::optional<QString>>("name");
        QTest::addColumn<QString>("expected");
        const std::optional<QString> none;
        QTest::newRow("display name") << std::optional(text("Shown")) << std::optional(text("Plain")) << text("Shown");
        QTest::newRow("name") << none << std::optional(text("Plain")) << text("Plain");
        QTest::newRow("file name") << none << none << text("My Notes");
        QTest::newRow("empty display name") << std::optional(text("")) << std::optional(text("Plain")) << text("");
        QTest::newRow("empty name") << none << std::optional(text("")) << text("");
    }

    void shortcutIsNamedByWhatTheBundleSays()
    {
        QFETCH(std::optional<QString>, displayName);
        QFETCH(std::optional<QString>, name);
        test::FakeAppBundles bundles;
        bundles.bundles[notesPath] = {text("org.notes"), displayName, name};
        const auto shortcut = test::Launching(bundles).launcher.makeShortcut(QUrl::fromLocalFile(notesPath));
        QVERIFY(shortcut);
        QCOMPARE(shortcut->path, notesPath);
        QCOMPARE(shortcut->bundleIdentifier, std::optional(text("org.notes")));
        QTEST(shortcut->name, "expected");
    }

    void bundleWithoutIdentifierGivesAShortcutWithoutOne()
    {
        test::FakeAppBundles bundles;
        bundles.bundles[notesPath] = {std::nullopt, text("Notes"), std::nullopt};
        const auto shortcut = test::Launching(bundles).launcher.makeShortcut(QUrl::fromLocalFile(notesPath));
        QCOMPARE(shortcut, std::optional(AppShortcut{notesPath, std::nullopt, text("Notes")}));
    }

    void bundleThatCannotBeReadStillGivesAShortcut()
    {
        test::FakeAppBundles bundles;
        const auto shortcut =
            test::Launching(bundles).launcher.makeShortcut(QUrl::fromLocalFile(text("/a/Old.version.app")));
        QCOMPARE(shortcut, std::optional(AppShortcut{text("/a/Old.version.app"), std::nullopt, text("Old.version")}));
    }

    void slashBehindAFolderIsNoPartOfItsPath()
    {
        test::FakeAppBundles bundles;
        const auto shortcut = test::Launching(bundles).launcher.makeShortcut(QUrl::fromLocalFile(notesPath + u'/'));
        QVERIFY(shortcut);
        QCOMPARE(shortcut->path, notesPath);
    }

    void otherFilesGiveNone_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("upper case") << text("/Applications/Notes.APP");
        QTest::newRow("mixed case") << text("/Applications/Notes.App");
        QTest::newRow("no extension") << text("/Applications/app");
        QTest::newRow("longer extension") << text("/Applications/Notes.apps");
        QTest::newRow("extension of the folder") << text("/Applications/Notes.app/Contents");
        QTest::newRow("nothing but the extension") << text("/Applications/.app");
        QTest::newRow("root") << text("/");
    }

    void otherFilesGiveNone()
    {
        QFETCH(QString, path);
        test::FakeAppBundles bundles;
        QVERIFY(!test::Launching(bundles).launcher.makeShortcut(QUrl::fromLocalFile(path)));
    }

    void linkIntoTheWebGivesNone()
    {
        test::FakeAppBundles bundles;
        QVERIFY(!test::Launching(bundles).launcher.makeShortcut(QUrl(text("https://example.org/Notes.app"))));
    }
};

MOORLINE_TEST(AppLauncherTest);
#include "AppLauncherTest.moc"
