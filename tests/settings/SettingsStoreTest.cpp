#include "settings/SettingsStore.h"
#include "fakes/FakeClock.h"
#include "fakes/SettingsGround.h"
#include "harness/TestCase.h"
#include "settings/SettingsCoding.h"
#include "support/Promise.h"

#include <QFile>
#include <QSignalSpy>

using namespace moorline;

namespace {

QUrl file(const char *path)
{
    return QUrl::fromLocalFile(QString::fromUtf8(path));
}

AppShortcut notes()
{
    return {QStringLiteral("/Applications/Notes.app"), QStringLiteral("org.notes"), QStringLiteral("Notes")};
}

PinnedItem pinned(const char *path, const char *name)
{
    return {QString::fromUtf8(path), QString::fromUtf8(name)};
}

} // namespace

class SettingsStoreTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_asked.clear();
        m_ground = std::make_unique<test::SettingsGround>();
        auto context = m_ground->context(m_clock);
        context.makeShortcut = [this](const QUrl &url) { return makeShortcut(url); };
        m_store = std::make_unique<SettingsStore>(context);
        m_changes = std::make_unique<QSignalSpy>(m_store.get(), &SettingsStore::settingsDidChange);
    }

    void changeIsOnDiskWhenItIsAnnounced()
    {
        std::optional<Settings> saved;
        connect(m_store.get(), &SettingsStore::settingsDidChange, this, [&] { saved = onDisk(); });
        Settings expected = m_store->settings();
        expected.bottomGap = 12.5;
        m_store->change([](Settings &settings) { settings.bottomGap = 12.5; });
        QCOMPARE(saved, std::optional(expected));
        QCOMPARE(m_changes->count(), 1);
    }

    void theAnnouncementCarriesTheRecordBefore()
    {
        const Settings before = m_store->settings();
        m_store->change([](Settings &settings) { settings.recentAppCount = 7; });
        QCOMPARE(m_changes->first().first().value<Settings>(), before);
        QCOMPARE(m_store->settings().recentAppCount, 7);
    }

    void aListenerMayMakeAChangeOfItsOwn()
    {
        connect(m_store.get(), &SettingsStore::settingsDidChange, this, [this](const Settings &before) {
            if (before.recentAppCount == 3)
                m_store->change([](Settings &settings) { settings.recentAppCount = 5; });
        });
        m_store->change([](Settings &settings) { settings.recentAppCount = 4; });
        QCOMPARE(onDisk()->recentAppCount, 5);
        QCOMPARE(m_changes->count(), 2);
    }

    void equalRecordIsNeitherWrittenNorAnnounced()
    {
        QVERIFY(QFile::remove(m_store->filePath()));
        m_store->change([](Settings &settings) { settings.bottomGap = 2; });
        QCOMPARE(m_changes->count(), 0);
        QVERIFY(!QFile::exists(m_store->filePath()));
    }

    void aDropOfManyFilesIsOneChange()
    {
        QList<QUrl> urls;
        for (int i = 0; i < 100; ++i)
            urls.append(QUrl::fromLocalFile(QStringLiteral("/home/me/%1.txt").arg(i)));
        m_store->pin(urls);
        QCOMPARE(m_store->settings().pinnedItems.size(), 100);
        QCOMPARE(m_changes->count(), 1);
    }

    void everyChangeIsAnnouncedOnce()
    {
        for (int count = 4; count < 8; ++count)
            m_store->change([count](Settings &settings) { settings.recentAppCount = count; });
        QCOMPARE(m_changes->count(), 4);
        QCOMPARE(onDisk()->recentAppCount, 7);
    }

    void switchingAWidgetOnBringsTheRowIntoOrder()
    {
        enable({WidgetKind::pinnedItems, WidgetKind::clock});
        m_store->toggleWidget(WidgetKind::monthCounter);
        QCOMPARE(m_store->settings().enabledWidgets,
            (QList{WidgetKind::clock, WidgetKind::monthCounter, WidgetKind::pinnedItems}));
        QCOMPARE(m_changes->count(), 1);
    }

    void switchingAWidgetOffKeepsTheRowAsItIs()
    {
        enable({WidgetKind::pinnedItems, WidgetKind::music, WidgetKind::clock});
        QVERIFY(m_store->isEnabled(WidgetKind::music));
        m_store->toggleWidget(WidgetKind::music);
        QVERIFY(!m_store->isEnabled(WidgetKind::music));
        QCOMPARE(m_store->settings().enabledWidgets, (QList{WidgetKind::pinnedItems, WidgetKind::clock}));
        QCOMPARE(m_changes->count(), 1);
    }

    void shortcutIsAddedOnce()
    {
        m_store->addShortcut(notes());
        AppShortcut moved = notes();
        moved.path = QStringLiteral("/home/Notes.app");
        m_store->addShortcut(moved);
        QCOMPARE(m_store->settings().appShortcuts, defaultShortcuts() + QList{notes()});
        QCOMPARE(m_changes->count(), 1);
    }

    void shortcutIsRemovedByItsIdentity()
    {
        m_store->addShortcut(notes());
        m_store->removeShortcut({QStringLiteral("/elsewhere"), QStringLiteral("org.notes"), QStringLiteral("Other")});
        QCOMPARE(m_store->settings().appShortcuts, defaultShortcuts());
        m_store->removeShortcut(notes());
        QCOMPARE(m_changes->count(), 2);
    }

    void pinnedItemIsAddedOnceAndRemovedByItsPath()
    {
        m_store->addPinnedItem(pinned("/a", "a"));
        m_store->addPinnedItem(pinned("/a", "again"));
        QCOMPARE(m_store->settings().pinnedItems, QList{pinned("/a", "a")});
        m_store->removePinnedItem(pinned("/a", "whatever"));
        QVERIFY(m_store->settings().pinnedItems.isEmpty());
        QCOMPARE(m_changes->count(), 2);
    }

    void droppedApplicationBecomesAShortcutOnce()
    {
        m_store->pin({file("/Applications/Notes.app"), file("/Applications/Notes.app")});
        m_store->pin({file("/Applications/Notes.app")});
        QCOMPARE(m_store->settings().appShortcuts, defaultShortcuts() + QList{notes()});
        QVERIFY(m_store->settings().pinnedItems.isEmpty());
    }

    void droppedApplicationFolderIsOneWithASlashToo()
    {
        m_store->pin({file("/Applications/Notes.app/")});
        QCOMPARE(m_store->settings().appShortcuts, defaultShortcuts() + QList{notes()});
    }

    void droppedFolderIsPinnedOnce()
    {
        m_store->pin({file("/home/me/Work")});
        m_store->pin({file("/home/me/Work"), file("/home/me/Work/")});
        QCOMPARE(m_store->settings().pinnedItems, QList{pinned("/home/me/Work", "Work")});
    }

    void rootFolderIsPinnedUnderItsPath()
    {
        m_store->pin({file("/")});
        QCOMPARE(m_store->settings().pinnedItems, QList{pinned("/", "/")});
    }

    void pinnedFileHasTheNameThatTheFileManagerShows()
    {
        m_ground->files.names.insert(QStringLiteral("/Users/me/Documents"), QStringLiteral("Dokumente"));
        m_store->pin({file("/Users/me/Documents/")});
        QCOMPARE(m_store->settings().pinnedItems, QList{pinned("/Users/me/Documents", "Dokumente")});
    }

    void upperCaseExtensionIsAFile()
    {
        m_store->pin({file("/Applications/Notes.APP")});
        QVERIFY(m_asked.isEmpty());
        QCOMPARE(m_store->settings().pinnedItems, QList{pinned("/Applications/Notes.APP", "Notes.APP")});
    }

    void applicationThatGivesNoShortcutIsPinnedAsAFile()
    {
        m_store->pin({file("/tmp/broken.app")});
        QCOMPARE(m_asked, QList{file("/tmp/broken.app")});
        QCOMPARE(m_store->settings().pinnedItems, QList{pinned("/tmp/broken.app", "broken.app")});
    }

    void dropsAreTakenInTheirOrder()
    {
        m_store->pin({file("/b"), file("/Applications/Notes.app"), file("/a b.txt")});
        QCOMPARE(m_store->settings().pinnedItems, (QList{pinned("/b", "b"), pinned("/a b.txt", "a b.txt")}));
        QCOMPARE(m_store->settings().appShortcuts.size(), 2);
    }

    void pinningAFileShowsTheWidgetForIt()
    {
        enable({WidgetKind::music, WidgetKind::clock});
        m_store->pin({file("/a")});
        QCOMPARE(
            m_store->settings().enabledWidgets, (QList{WidgetKind::music, WidgetKind::clock, WidgetKind::pinnedItems}));
    }

    void pinningAnApplicationAloneShowsNoOtherWidget()
    {
        enable({WidgetKind::clock});
        m_store->pin({file("/Applications/Notes.app")});
        QCOMPARE(m_store->settings().enabledWidgets, QList{WidgetKind::clock});
    }

    void emptyDropChangesNothing()
    {
        m_store->pin({});
        QCOMPARE(m_changes->count(), 0);
    }

    void aNameThatIsNoTextIsNotPinnedAndItsNeighboursAre()
    {
        m_store->pin({file("/home/a"), QUrl::fromEncoded("file:///home/b%FF"), file("/home/c")});
        QCOMPARE(m_store->settings().pinnedItems, (QList{pinned("/home/a", "a"), pinned("/home/c", "c")}));
    }

    void applicationsArePinnedOnceTheyWereLookedAt()
    {
        auto context = m_ground->context(m_clock);
        context.makeShortcut = [this](const QUrl &url) { return makeShortcut(url); };
        QStringList looked;
        const Promise<bool> seen;
        context.lookAt = [&](const QStringList &paths) -> QCoro::Task<> {
            looked = paths;
            static_cast<void>(co_await seen);
        };
        auto store = std::make_unique<SettingsStore>(context);
        store->pin({file("/b"), file("/Applications/Notes.app/"), file("/Applications/Other.app")});
        QCOMPARE(looked,
            (QStringList{QStringLiteral("/Applications/Notes.app"), QStringLiteral("/Applications/Other.app")}));
        QCOMPARE(m_asked, QList<QUrl>());
        QCOMPARE(store->settings().pinnedItems, QList<PinnedItem>());
        // What has to be looked at keeps nothing else waiting.
        store->pin({file("/c")});
        QCOMPARE(store->settings().pinnedItems, QList{pinned("/c", "c")});
        seen.resolve(true);
        QCOMPARE(store->settings().pinnedItems,
            (QList{pinned("/c", "c"), pinned("/b", "b"), pinned("/Applications/Other.app", "Other.app")}));
        QVERIFY(store->settings().appShortcuts.contains(notes()));
    }

    void theStoreMayEndUnderALook()
    {
        auto context = m_ground->context(m_clock);
        const Promise<bool> seen;
        context.lookAt = [&seen](const QStringList &) -> QCoro::Task<> { static_cast<void>(co_await seen); };
        auto store = std::make_unique<SettingsStore>(context);
        store->pin({file("/Applications/Notes.app")});
        store.reset();
        seen.resolve(true);
        QCOMPARE(m_asked, QList<QUrl>());
    }

    void extensionOfApplicationsIsTheSystems()
    {
        auto context = m_ground->context(m_clock);
        context.applicationExtension = QStringLiteral("desktop");
        context.makeShortcut = [](const QUrl &) { return notes(); };
        SettingsStore store(context);
        store.pin({file("/usr/share/applications/notes.desktop"), file("/Applications/Notes.app")});
        QCOMPARE(store.settings().appShortcuts, defaultShortcuts() + QList{notes()});
        QCOMPARE(store.settings().pinnedItems, QList{pinned("/Applications/Notes.app", "Notes.app")});
    }

private:
    /// Knows one application.
    std::optional<AppShortcut> makeShortcut(const QUrl &url)
    {
        m_asked.append(url);
        const bool isNotes = url.path().startsWith(notes().path);
        return isNotes ? std::optional(notes()) : std::nullopt;
    }

    void enable(const QList<WidgetKind> &widgets)
    {
        m_store->change([&widgets](Settings &settings) { settings.enabledWidgets = widgets; });
        m_changes->clear();
    }

    [[nodiscard]] std::optional<Settings> onDisk() const
    {
        QFile saved(m_store->filePath());
        return saved.open(QIODevice::ReadOnly) ? decodeSettings(saved.readAll()) : std::nullopt;
    }

    test::FakeClock m_clock;
    std::unique_ptr<test::SettingsGround> m_ground;
    std::unique_ptr<SettingsStore> m_store;
    std::unique_ptr<QSignalSpy> m_changes;
    QList<QUrl> m_asked;
};

MOORLINE_TEST(SettingsStoreTest);
#include "SettingsStoreTest.moc"
