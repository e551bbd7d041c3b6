#include "fakes/TemporaryDirectories.h"
#include "harness/TestCase.h"
#include "settings/SettingsCoding.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <sys/stat.h>

using namespace moorline;

namespace {

const auto noShortcut = [](const QUrl &) -> std::optional<AppShortcut> { return std::nullopt; };

/// The defaults as a store has them.
Settings introducedDefaults()
{
    Settings settings;
    settings.pinnedItemsIntroduced = true;
    return settings;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class SettingsStoreFileTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_directories = std::make_unique<test::TemporaryDirectories>();
        m_folder = m_directories->applicationSupport() + QStringLiteral("/app.moorline.Moorline");
        m_path = m_folder + QStringLiteral("/settings.json");
    }

    void firstStartMakesFolderAndFile()
    {
        const auto store = makeStore();
        QCOMPARE(store->filePath(), m_path);
        QCOMPARE(store->settings(), introducedDefaults());
        QCOMPARE(decodeSettings(contents(m_path)), std::optional(introducedDefaults()));
        QVERIFY(contents(m_path).contains("\"pinnedItemsIntroduced\": true"));
    }

    void foldersAboveAreMadeToo()
    {
        const test::GivenDirectories deep(m_directories->applicationSupport() + QStringLiteral("/a/b/c"));
        const SettingsStore store(deep, QStringLiteral("app"), noShortcut);
        QVERIFY(QFile::exists(store.filePath()));
    }

    void olderFileGetsThePinnedItemsWidgetAtOnce()
    {
        write(R"({"enabledWidgets":["clock"],"pinnedItemsIntroduced":false})");
        const QList expected{WidgetKind::clock, WidgetKind::pinnedItems};
        QCOMPARE(makeStore()->settings().enabledWidgets, expected);
        const auto saved = decodeSettings(contents(m_path));
        QCOMPARE(saved->enabledWidgets, expected);
        QVERIFY(saved->pinnedItemsIntroduced);
    }

    void olderFileThatHasThePinnedItemsWidgetKeepsItsOrder()
    {
        write(R"({"enabledWidgets":["pinned-items","clock"]})");
        QCOMPARE(makeStore()->settings().enabledWidgets, (QList{WidgetKind::pinnedItems, WidgetKind::clock}));
    }

    void pinnedItemsWidgetThatWasSwitchedOffStaysOff()
    {
        write(R"({"enabledWidgets":["clock"],"pinnedItemsIntroduced":true})");
        QCOMPARE(makeStore()->settings().enabledWidgets, QList{WidgetKind::clock});
        QCOMPARE(makeStore()->settings().enabledWidgets, QList{WidgetKind::clock});
    }

    void nextStartFindsWhatWasChosen()
    {
        Settings settings = makeStore()->settings();
        settings.recentAppCount = 8;
        settings.pinnedItems = {{QStringLiteral("/tmp/a b"), QStringLiteral("a b")}};
        makeStore()->change([&settings](Settings &record) { record = settings; });
        QCOMPARE(makeStore()->settings(), settings);
    }

    void unreadableFileGivesWayToTheDefaults_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no object") << QByteArray("[1,2]");
        QTest::newRow("truncated") << QByteArray("{\"showSeconds\":tr");
        QTest::newRow("binary") << QByteArray::fromHex("00ff00ff00ff");
        QTest::newRow("too large") << QByteArray("{\"showSeconds\":true}") + QByteArray(9 * 1024 * 1024, ' ');
    }

    void unreadableFileGivesWayToTheDefaults()
    {
        QFETCH(QByteArray, document);
        write(document);
        QCOMPARE(makeStore()->settings(), introducedDefaults());
        QCOMPARE(decodeSettings(contents(m_path)), std::optional(introducedDefaults()));
    }

    void pipeInThePlaceOfTheFileDoesNotHang()
    {
        QVERIFY(QDir().mkpath(m_folder));
        QCOMPARE(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        QCOMPARE(makeStore()->settings(), introducedDefaults());
    }

    void folderInThePlaceOfTheFileIsSurvived()
    {
        QVERIFY(QDir().mkpath(m_path));
        const auto store = makeStore();
        QCOMPARE(store->settings(), introducedDefaults());
        changeOneSetting(*store);
        QVERIFY(store->settings().showSeconds);
        QVERIFY(QFileInfo(m_path).isDir());
    }

    void linkedFileIsReadAndWrittenWhereItLies()
    {
        const QString target = m_directories->applicationSupport() + QStringLiteral("/elsewhere.json");
        writeTo(target, R"({"recentAppCount":7})");
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(target, m_path));
        const auto store = makeStore();
        QCOMPARE(store->settings().recentAppCount, 7);
        changeOneSetting(*store);
        QCOMPARE(QFile::symLinkTarget(m_path), target);
        QVERIFY(decodeSettings(contents(target))->showSeconds);
    }

    void linkToNothingIsSurvived()
    {
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(m_directories->applicationSupport() + QStringLiteral("/nowhere/x.json"), m_path));
        const auto store = makeStore();
        changeOneSetting(*store);
        QVERIFY(store->settings().showSeconds);
    }

    void linkToItselfIsSurvived()
    {
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(m_path, m_path));
        const auto store = makeStore();
        changeOneSetting(*store);
        QVERIFY(store->settings().showSeconds);
    }

    void placeThatCannotBeWrittenIsSurvived()
    {
        const QString file = m_directories->applicationSupport() + QStringLiteral("/file");
        writeTo(file, "not a folder");
        const test::GivenDirectories blocked(file);
        SettingsStore store(blocked, QStringLiteral("app"), noShortcut);
        QSignalSpy changes(&store, &SettingsStore::settingsDidChange);
        changeOneSetting(store);
        QVERIFY(store.settings().showSeconds);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(contents(file), QByteArray("not a folder"));
    }

    void nothingIsLeftBesideTheFile()
    {
        changeOneSetting(*makeStore());
        QCOMPARE(QDir(m_folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList(QStringLiteral("settings.json")));
    }

private:
    [[nodiscard]] std::unique_ptr<SettingsStore> makeStore() const
    {
        return std::make_unique<SettingsStore>(*m_directories, QStringLiteral("app"), noShortcut);
    }

    static void changeOneSetting(SettingsStore &store)
    {
        store.change([](Settings &settings) { settings.showSeconds = true; });
    }

    static void writeTo(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    void write(const QByteArray &bytes) const
    {
        QVERIFY(QDir().mkpath(m_folder));
        writeTo(m_path, bytes);
    }

    std::unique_ptr<test::TemporaryDirectories> m_directories;
    QString m_folder;
    QString m_path;
};

MOORLINE_TEST(SettingsStoreFileTest);
#include "SettingsStoreFileTest.moc"
