#include "fakes/FakeClock.h"
#include "fakes/SettingsGround.h"
#include "harness/TestCase.h"
#include "settings/SettingsCoding.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <sys/stat.h>

using namespace moorline;
using namespace std::chrono_literals;

namespace {

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
        m_ground = std::make_unique<test::SettingsGround>();
        m_folder = m_ground->directories.applicationSupport() + QStringLiteral("/app.moorline.Moorline");
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
        const test::GivenDirectories deep(m_ground->directories.applicationSupport() + QStringLiteral("/a/b/c"));
        const auto store = makeStore(deep);
        QVERIFY(QFile::exists(store->filePath()));
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
        const auto store = makeStore();
        QCOMPARE(store->settings(), introducedDefaults());
        m_clock.advance(3s);
        QCOMPARE(decodeSettings(contents(m_path)), std::optional(introducedDefaults()));
        QCOMPARE(contents(m_path + QStringLiteral(".damaged")), document);
    }

    void pipeInThePlaceOfTheFileDoesNotHang()
    {
        QVERIFY(QDir().mkpath(m_folder));
        QCOMPARE(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        QCOMPARE(makeStore()->settings(), introducedDefaults());
    }

    void whatCannotBeSettingsIsNotRead_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("an endless device") << QStringLiteral("/dev/zero");
        QTest::newRow("a device that takes everything") << QStringLiteral("/dev/null");
        QTest::newRow("a folder") << QStringLiteral("/");
    }

    void whatCannotBeSettingsIsNotRead()
    {
        QFETCH(QString, target);
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(target, m_path));
        const auto store = makeStore();
        QCOMPARE(store->settings(), introducedDefaults());
        changeOneSetting(*store);
        QVERIFY(store->settings().showSeconds);
        QCOMPARE(QFile::symLinkTarget(m_path), target);
    }

    void pipeThatTakesThePlaceOfTheFileDoesNotHang()
    {
        const auto store = makeStore();
        QVERIFY(QFile::remove(m_path));
        QCOMPARE(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        changeOneSetting(*store);
        QVERIFY(store->settings().showSeconds);
        QVERIFY(QFile::remove(m_path));
        m_clock.advance(20s);
        QVERIFY(decodeSettings(contents(m_path))->showSeconds);
    }

    void fileOfAHundredMegabytesIsKeptAndNotRead()
    {
        write("{");
        QVERIFY(QFile::resize(m_path, qint64(100) * 1024 * 1024));
        const auto store = makeStore();
        m_clock.advance(3s);
        QCOMPARE(decodeSettings(contents(m_path)), std::optional(introducedDefaults()));
        QCOMPARE(QFileInfo(m_path + QStringLiteral(".damaged")).size(), qint64(100) * 1024 * 1024);
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
        const QString target = m_ground->directories.applicationSupport() + QStringLiteral("/elsewhere.json");
        writeTo(target, R"({"recentAppCount":7})");
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(target, m_path));
        const auto store = makeStore();
        QCOMPARE(store->settings().recentAppCount, 7);
        changeOneSetting(*store);
        QCOMPARE(QFile::symLinkTarget(m_path), target);
        QVERIFY(decodeSettings(contents(target))->showSeconds);
    }

    void chainOfLinksIsFollowedToItsEnd()
    {
        const QString root = m_ground->directories.applicationSupport();
        const QString target = root + QStringLiteral("/end.json");
        const QString between = root + QStringLiteral("/between");
        writeTo(target, R"({"recentAppCount":7,"bottomGap":"wide"})");
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(target, between));
        QVERIFY(QFile::link(between, m_path));
        const auto store = makeStore();
        changeOneSetting(*store);
        QCOMPARE(QFile::symLinkTarget(m_path), between);
        QCOMPARE(QFile::symLinkTarget(between), target);
        QVERIFY(decodeSettings(contents(target))->showSeconds);
        QVERIFY(QFile::exists(m_path + QStringLiteral(".damaged")));
    }

    void linkedFolderIsReadAndWrittenWhereItLies()
    {
        const QString target = m_ground->directories.applicationSupport() + QStringLiteral("/elsewhere");
        QVERIFY(QDir().mkpath(target));
        writeTo(target + QStringLiteral("/settings.json"), R"({"recentAppCount":7})");
        QVERIFY(QFile::link(target, m_folder));
        const auto store = makeStore();
        QCOMPARE(store->settings().recentAppCount, 7);
        changeOneSetting(*store);
        QCOMPARE(QFile::symLinkTarget(m_folder), target);
        QVERIFY(decodeSettings(contents(target + QStringLiteral("/settings.json")))->showSeconds);
    }

    void linkToNothingIsSurvived()
    {
        QVERIFY(QDir().mkpath(m_folder));
        QVERIFY(QFile::link(m_ground->directories.applicationSupport() + QStringLiteral("/nowhere/x.json"), m_path));
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
        const QString file = m_ground->directories.applicationSupport() + QStringLiteral("/file");
        writeTo(file, "not a folder");
        const test::GivenDirectories blocked(file);
        const auto store = makeStore(blocked);
        QSignalSpy changes(store.get(), &SettingsStore::settingsDidChange);
        changeOneSetting(*store);
        QVERIFY(store->settings().showSeconds);
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
    [[nodiscard]] std::unique_ptr<SettingsStore> makeStore() { return makeStore(m_ground->directories); }

    [[nodiscard]] std::unique_ptr<SettingsStore> makeStore(const Directories &directories)
    {
        return std::make_unique<SettingsStore>(SettingsStore::Context{
            directories, m_clock, m_ground->fileWatch, m_ground->files, QStringLiteral("app"), nullptr});
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

    test::FakeClock m_clock;
    std::unique_ptr<test::SettingsGround> m_ground;
    QString m_folder;
    QString m_path;
};

MOORLINE_TEST(SettingsStoreFileTest);
#include "SettingsStoreFileTest.moc"
