#include "apps/DockImporter.h"

#include "apps/Launching.h"
#include "fakes/FakePreferences.h"
#include "fakes/SettingsGround.h"
#include "harness/Answer.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

const QString dockDomain = QStringLiteral("com.apple.dock");
const QString appsKey = QStringLiteral("persistent-apps");
const AppShortcut finder{QStringLiteral("/System/Library/CoreServices/Finder.app"), QStringLiteral("com.apple.finder"),
    QStringLiteral("Finder")};
const AppShortcut mail{
    QStringLiteral("/Applications/Mail.app"), QStringLiteral("org.example.mail"), QStringLiteral("Mail")};

QVariantMap tileData(const QString &label, const QString &address)
{
    return {{QStringLiteral("file-label"), label},
        {QStringLiteral("file-data"), QVariantMap{{QStringLiteral("_CFURLString"), address}}}};
}

QVariant tile(const QVariantMap &data)
{
    return QVariantMap{{QStringLiteral("tile-data"), data}};
}

QVariant tile(const char *label, const char *address)
{
    return tile(tileData(QString::fromUtf8(label), QString::fromUtf8(address)));
}

/// A desk where the mail is installed; the settings hold no shortcut.
struct Import : Launching {
    Import()
    {
        bundles.bundles[mail.path] = {mail.bundleIdentifier, mail.name, std::nullopt};
        bundles.listed = {{mail.path, bundles.bundles[mail.path]}};
        store.change([](Settings &settings) { settings.appShortcuts.clear(); });
    }

    void pin(const QVariantList &tiles) { preferences.domains[dockDomain] = {{appsKey, tiles}}; }
    DockImporter::Result read() { return Answer(importer->readPinnedApps()).value(); }
    DockImporter::Result run() { return Answer(importer->importIntoSettings()).value(); }

    SettingsGround ground;
    SettingsStore store{ground.context(clock)};
    FakePreferences preferences;
    std::unique_ptr<DockImporter> importer = std::make_unique<DockImporter>(DockImporter::Context{
        .preferences = preferences, .bundles = bundles, .launcher = launcher, .files = ground.files, .store = store});
};

} // namespace

class DockImporterTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whatCannotBeReadIsEmpty_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("nothing there") << QVariant();
        QTest::newRow("no list") << QVariant(QStringLiteral("Mail"));
        QTest::newRow("not only dictionaries")
            << QVariant(QVariantList{tile("Mail", "file:///Applications/Mail.app/"), 7});
        QTest::newRow("texts") << QVariant(QStringList{QStringLiteral("Mail")});
        QTest::newRow("no tile data") << QVariant(
            QVariantList{QVariantMap(), QVariantMap{{QStringLiteral("tile-data"), 7}}});
    }

    void whatCannotBeReadIsEmpty()
    {
        QFETCH(QVariant, value);
        Import import;
        import.preferences.domains[dockDomain] = {{ appsKey, value }};
        QCOMPARE(import.read(), DockImporter::Result());
    }

    void withoutADomainThereIsNothing()
    {
        Import import;
        QCOMPARE(import.read(), DockImporter::Result());
    }

    void tilesBecomeShortcutsInTheirOrder()
    {
        Import import;
        import.pin({tile("Post", "file:///Applications/Mail.app/"), tile("Finder", "file:///Finder.app/"),
            tile("My Notes", "file:///Applications/My%20Notes.app/")});
        const auto result = import.read();
        QCOMPARE(result.shortcuts,
            (QList<AppShortcut>{mail, finder,
                {QStringLiteral("/Applications/My Notes.app"), std::nullopt, QStringLiteral("My Notes")}}));
        QVERIFY(result.unresolved.isEmpty());
        QVERIFY(result.added.isEmpty());
        QCOMPARE(import.bundles.timesListed, 0);
        QVERIFY(import.store.settings().appShortcuts.isEmpty());
    }

    void anAddressWithoutASchemeIsAPath()
    {
        Import import;
        import.pin({tile("Post", "/Applications/Mail.app")});
        QCOMPARE(import.read().shortcuts, QList<AppShortcut>{mail});
    }

    void finderIsKnownByItsLabel_data()
    {
        QTest::addColumn<QVariantMap>("data");
        QTest::newRow("as it is") << tileData(QStringLiteral("Finder"), QStringLiteral("file:///Finder.app"));
        QTest::newRow("lower case") << tileData(
            QStringLiteral("finder"), QStringLiteral("file:///Applications/Mail.app"));
        QTest::newRow("upper case") << tileData(QStringLiteral("FINDER"), QStringLiteral("nonsense"));
        QTest::newRow("no address") << QVariantMap{{QStringLiteral("label"), QStringLiteral("Finder")}};
    }

    void finderIsKnownByItsLabel()
    {
        QFETCH(QVariantMap, data);
        Import import;
        import.pin({tile(data)});
        QCOMPARE(import.read().shortcuts, QList<AppShortcut>{finder});
    }

    void theLabelIsTheFirstThereIs_data()
    {
        QTest::addColumn<QVariantMap>("data");
        QTest::addColumn<QString>("label");
        const QString fileLabel = QStringLiteral("file-label");
        const QString label = QStringLiteral("label");
        QTest::newRow("both") << QVariantMap{{fileLabel, QStringLiteral("One")}, {label, QStringLiteral("Two")}}
                              << QStringLiteral("One");
        QTest::newRow("second") << QVariantMap{{label, QStringLiteral("Two")}} << QStringLiteral("Two");
        QTest::newRow("no text") << QVariantMap{{fileLabel, 1}, {label, QStringLiteral("Two")}}
                                 << QStringLiteral("Two");
        QTest::newRow("none") << QVariantMap() << QStringLiteral("Unknown");
    }

    void theLabelIsTheFirstThereIs()
    {
        QFETCH(QVariantMap, data);
        Import import;
        import.pin({tile(data)});
        const auto result = import.read();
        QVERIFY(result.shortcuts.isEmpty());
        QFETCH(QString, label);
        QCOMPARE(result.unresolved, QStringList{label});
    }

    void whatMovedIsFoundByItsFileName()
    {
        Import import;
        const QString old = QStringLiteral("/Users/me/Applications/MAIL.app");
        import.ground.files.missing.insert(old);
        import.pin({tile("Post", "file:///Users/me/Applications/MAIL.app/")});
        QCOMPARE(import.read().shortcuts, QList<AppShortcut>{mail});
    }

    void whatMovedIsFoundWhereTheSystemKnowsItToBe()
    {
        Import import;
        const QString old = QStringLiteral("/usr/share/applications/post.app");
        import.ground.files.missing.insert(old);
        import.bundles.places[old] = mail.path;
        import.pin({tile("Post", "file:///usr/share/applications/post.app")});
        QCOMPARE(import.read().shortcuts, QList<AppShortcut>{mail});
        QCOMPARE(import.bundles.timesListed, 0);
    }

    void whatIsNowhereIsReportedByItsLabel()
    {
        Import import;
        import.ground.files.missing = {QStringLiteral("/a/Gone.app"), QStringLiteral("/b/Lost.app")};
        import.pin({tile("Gone", "file:///a/Gone.app/"), tile("Mail", "file:///Applications/Mail.app/"),
            tile("Lost", "file:///b/Lost.app/"), tile("No address", "")});
        const auto result = import.read();
        QCOMPARE(result.shortcuts, QList<AppShortcut>{mail});
        QCOMPARE(result.unresolved,
            (QStringList{QStringLiteral("Gone"), QStringLiteral("Lost"), QStringLiteral("No address")}));
        QCOMPARE(import.bundles.timesListed, 1);
    }

    void whatIsThereButNoApplicationIsNotLookedForElsewhere()
    {
        Import import;
        import.pin({tile("Mail", "file:///Applications/Mail.txt")});
        QCOMPARE(import.read().unresolved, QStringList{QStringLiteral("Mail")});
    }

    void whatIsImportedIsAppended()
    {
        Import import;
        import.store.addShortcut(finder);
        import.pin({tile("Mail", "file:///Applications/Mail.app/"), tile("Finder", "")});
        const auto result = import.run();
        QCOMPARE(result.shortcuts, (QList<AppShortcut>{mail, finder}));
        QCOMPARE(result.added, QList<AppShortcut>{mail});
        QCOMPARE(import.store.settings().appShortcuts, (QList<AppShortcut>{finder, mail}));
    }

    void theOrderOfTheDockIsKept()
    {
        Import import;
        const AppShortcut notes{QStringLiteral("/Applications/Notes.app"), std::nullopt, QStringLiteral("Notes")};
        import.pin({tile("Notes", "file:///Applications/Notes.app/"), tile("Mail", "file:///Applications/Mail.app/")});
        QCOMPARE(import.run().added, (QList<AppShortcut>{notes, mail}));
        QCOMPARE(import.store.settings().appShortcuts, (QList<AppShortcut>{notes, mail}));
    }

    void aSecondImportAddsNothing()
    {
        Import import;
        import.pin({tile("Mail", "file:///Applications/Mail.app/"), tile("Mail", "file:///Applications/Mail.app/")});
        QCOMPARE(import.run().added, QList<AppShortcut>{mail});
        const auto again = import.run();
        QVERIFY(again.added.isEmpty());
        QCOMPARE(again.shortcuts.size(), 2);
        QCOMPARE(import.store.settings().appShortcuts, QList<AppShortcut>{mail});
    }

    void theUserIsToldWhatCameOfIt()
    {
        QCOMPARE(DockImporter::sentence(0),
            QStringLiteral("Nothing new — everything pinned in the macOS Dock is already here."));
        QCOMPARE(DockImporter::sentence(1), QStringLiteral("Added 1 app from the macOS Dock."));
        QCOMPARE(DockImporter::sentence(2), QStringLiteral("Added 2 apps from the macOS Dock."));
        QCOMPARE(DockImporter::sentence(21), QStringLiteral("Added 21 apps from the macOS Dock."));
    }
};

MOORLINE_TEST(DockImporterTest);
#include "DockImporterTest.moc"
