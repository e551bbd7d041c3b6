#include "EntriesOnDisk.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/apps/DesktopEntries.h"

#include <QSignalSpy>
#include <unistd.h>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

const QString finder = QStringLiteral("/System/Library/CoreServices/Finder.app");
const std::optional<QString> finderId = QStringLiteral("com.apple.finder");

const QByteArray manager("Name=Files\nExec=/bin/true %U\nMimeType=inode/directory;\nCategories=System;FileManager;");

QString own(const char *id)
{
    return QString::fromLatin1(id);
}

} // namespace

/// What is listed and found among real files, and what is heard of their changes.
class InstalledEntriesTest final : public TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_disk = std::make_unique<EntriesOnDisk>();
    }

    void cleanup()
    {
        m_entries.reset();
        m_disk.reset();
        TestCase::cleanup();
    }

    void theUsersOwnComeFirstAndCount()
    {
        m_disk->writeEntry(m_disk->system(own("pad")), "Name=Pad\nExec=/bin/true");
        m_disk->writeEntry(m_disk->own(own("pad")), "Name=My Pad\nExec=/bin/true %f");
        m_disk->writeEntry(m_disk->system(own("mail")), "GenericName=Mail\nExec=/bin/true");
        start();
        const QList<InstalledBundle> expected{
            {m_disk->own(own("pad")), {.identifier = own("pad"), .displayName = own("My Pad"), .takesFiles = true}},
            {m_disk->system(own("mail")), {.identifier = own("mail"), .name = own("Mail"), .takesFiles = false}}};
        QCOMPARE(listed(), expected);
        QCOMPARE(m_entries->locate(m_disk->system(own("pad")), own("pad")), m_disk->own(own("pad")));
        QCoro::waitFor(m_entries->lookAt({m_disk->system(own("pad"))}));
        QCOMPARE(m_entries->locate(m_disk->system(own("pad")), std::nullopt), m_disk->system(own("pad")));
    }

    void whatIsNotThereOrNotForThisDesktopIsNotListed()
    {
        m_disk->writeEntry(m_disk->system(own("a")), "Name=A\nExec=/bin/true\nTryExec=/nowhere/program");
        m_disk->writeEntry(m_disk->system(own("b")), "Name=B\nExec=/bin/true\nTryExec=true");
        m_disk->writeEntry(m_disk->system(own("c")), "Name=C\nExec=/bin/true\nOnlyShowIn=KDE;");
        m_disk->writeEntry(m_disk->system(own("d")), "Name=D\nExec=/bin/true\nNotShowIn=XFCE;");
        m_disk->writeEntry(m_disk->system(own("e")), "Name=E\nExec=/bin/true\nNoDisplay=true");
        m_disk->writeEntry(m_disk->system(own("f")), "Name=F\nExec=/bin/true");
        m_disk->writeEntry(m_disk->own(own("f")), "Name=F\nHidden=true");
        start(own("XFCE"));
        QCOMPARE(listedIds(), QStringList(own("b")));
        QVERIFY(m_entries->info(m_disk->system(own("e"))));
        QVERIFY(!m_entries->info(m_disk->own(own("f"))));
        QCOMPARE(m_entries->locate(m_disk->system(own("f")), own("f")), std::nullopt);
    }

    void theFileManagerStandsInForFinder()
    {
        m_disk->writeEntry(m_disk->system(own("code")), "Name=Code\nExec=/bin/true %F\nMimeType=inode/directory;");
        m_disk->writeEntry(m_disk->system(own("files")), manager);
        m_disk->write(m_disk->mimeList(), "[Default Applications]\ninode/directory=code.desktop\n");
        start();
        const auto info = m_entries->info(finder);
        QVERIFY(info);
        QCOMPARE(info->identifier, finderId);
        QCOMPARE(info->displayName, own("Files"));
        QCOMPARE(m_entries->info(m_disk->system(own("files")))->identifier, finderId);
        QCOMPARE(m_entries->info(m_disk->system(own("code")))->identifier, own("code"));
        QCOMPARE(m_entries->locate(finder, finderId), m_disk->system(own("files")));
        QCOMPARE(listedIds(), (QStringList{own("code"), *finderId}));
    }

    void anotherChosenFileManagerIsNews()
    {
        m_disk->writeEntry(m_disk->system(own("files")), manager);
        m_disk->writeEntry(m_disk->system(own("other")), manager);
        start();
        QCOMPARE(m_entries->locate(finder, finderId), m_disk->system(own("files")));
        m_disk->write(m_disk->mimeList(), "[Default Applications]\ninode/directory=other.desktop;\n");
        QVERIFY(hearsOfChange());
        QCOMPARE(m_entries->locate(finder, finderId), m_disk->system(own("other")));
        m_disk->write(m_disk->mimeList(), "[Removed Associations]\ninode/directory=files.desktop;other.desktop;\n");
        QVERIFY(hearsOfChange());
        QCOMPARE(m_entries->locate(finder, finderId), std::nullopt);
        QVERIFY(!m_entries->info(finder));
    }

    void whatIsInstalledOrRemovedIsNews()
    {
        start();
        QCOMPARE(listedIds(), QStringList());
        // Its folder comes with it.
        m_disk->writeEntry(m_disk->own(own("pad")), "Name=Pad\nExec=/bin/true");
        QVERIFY(hearsOfChange());
        QCOMPARE(listedIds(), QStringList(own("pad")));
        m_disk->writeEntry(m_disk->own(own("sub/tool")), "Name=Tool\nExec=/bin/true");
        QVERIFY(hearsOfChange());
        QCOMPARE(listedIds(), (QStringList{own("pad"), own("sub-tool")}));
        QVERIFY(QFile::remove(m_disk->own(own("pad"))));
        QVERIFY(hearsOfChange());
        QCOMPARE(listedIds(), QStringList(own("sub-tool")));
        QVERIFY(QDir(m_disk->path(own("home/applications"))).removeRecursively());
        QVERIFY(hearsOfChange());
        QCOMPARE(listedIds(), QStringList());
        m_disk->writeEntry(m_disk->own(own("pad")), "Name=Pad\nExec=/bin/true");
        QVERIFY(hearsOfChange());
        QCOMPARE(listedIds(), QStringList(own("pad")));
    }

    void whatIsWrittenInPlaceIsNews()
    {
        const QString path = m_disk->writeEntry(m_disk->system(own("pad")), "Name=Pad\nExec=/bin/true");
        start();
        m_disk->writeEntry(path, "Name=Other\nExec=/bin/true");
        QVERIFY(hearsOfChange());
        QCOMPARE(m_entries->info(path)->displayName, own("Other"));
    }

    void whatChangesNothingIsNoNews()
    {
        const QString path = m_disk->writeEntry(m_disk->system(own("pad")), "Name=Pad\nExec=/bin/true");
        start();
        QSignalSpy changed(m_entries.get(), &AppBundles::changed);
        m_disk->write(m_disk->path(own("system/applications/readme.txt")), "text");
        QTest::qWait(20);
        QCOMPARE(m_clock.runningTimers(), 0);
        m_disk->writeEntry(path, "Name=Pad\nExec=/bin/true");
        QTRY_COMPARE(m_clock.runningTimers(), 1);
        m_clock.advance(500ms);
        QCOMPARE(listedIds(), QStringList(own("pad")));
        QCOMPARE(changed.size(), 0);
    }

    void manyChangesAreOneReading()
    {
        start();
        QSignalSpy changed(m_entries.get(), &AppBundles::changed);
        for (int index = 0; index < 50; ++index)
            m_disk->writeEntry(m_disk->own(QStringLiteral("app-%1").arg(index)), "Name=App\nExec=/bin/true");
        QVERIFY(hearsOfChange());
        QCOMPARE(listed().size(), 50);
        QCOMPARE(changed.size(), 1);
    }

    void whoAsksAfterAChangeIsToldOfIt()
    {
        start();
        m_disk->writeEntry(m_disk->own(own("pad")), "Name=Pad\nExec=/bin/true");
        QTRY_COMPARE(m_clock.runningTimers(), 1);
        bool isAnswered = false;
        QCoro::Task<QList<InstalledBundle>> task = m_entries->installed();
        task.then([&](const QList<InstalledBundle> &bundles) { isAnswered = bundles.size() == 1; });
        QTest::qWait(20);
        QVERIFY(!isAnswered);
        m_clock.advance(500ms);
        QTRY_VERIFY(isAnswered);
    }

    void hostileEntriesDoNoHarm()
    {
        const QString folder = m_disk->path(own("system/applications/"));
        m_disk->writeEntry(m_disk->system(own("good")), "Name=Good\nExec=/bin/true");
        m_disk->writeEntry(folder + own("no-exec.desktop"), "Name=No Exec");
        m_disk->writeEntry(folder + own("endless-exec.desktop"), "Name=E\nExec=" + QByteArray(500'000, 'x'));
        m_disk->writeEntry(
            folder + own("endless-name.desktop"), "Name=" + QByteArray(500'000, 'n') + "\nExec=/bin/true");
        m_disk->writeEntry(folder + own("nul.desktop"), QByteArray("Name=N\0N\nExec=/bin/true", 24));
        m_disk->write(folder + own("huge.desktop"),
            "[Desktop Entry]\nType=Application\nName=Huge\nExec=/bin/true\n#" + QByteArray(2 * 1024 * 1024, 'x'));
        m_disk->write(folder + own("binary.desktop"), QByteArray(1000, '\xff'));
        QVERIFY(QFile::link(folder, folder + own("loop")));
        QVERIFY(QFile::link(folder + own("b.desktop"), folder + own("a.desktop")));
        QVERIFY(QFile::link(folder + own("a.desktop"), folder + own("b.desktop")));
        start();
        QCOMPARE(listedIds(), (QStringList{own("endless-name"), own("good")}));
        QVERIFY(m_entries->info(folder + own("endless-name.desktop"))->displayName->size() < 1000);
        QVERIFY(!m_entries->info(folder + own("a.desktop")));
        QVERIFY(!m_entries->info(folder + own("huge.desktop")));
    }

    void aLinkToALargeTreeTakesNothingAway()
    {
        for (int index = 0; index < 300; ++index)
            QVERIFY(QDir().mkpath(m_disk->path(QStringLiteral("tree/folder-%1").arg(index))));
        m_disk->writeEntry(m_disk->own(own("a")), "Name=A\nExec=/bin/true");
        m_disk->writeEntry(m_disk->own(own("sub/z")), "Name=Z\nExec=/bin/true");
        m_disk->writeEntry(m_disk->system(own("mail")), "Name=Mail\nExec=/bin/true");
        QVERIFY(QFile::link(m_disk->path(own("tree")), m_disk->path(own("home/applications/rootlink"))));
        start();
        QCOMPARE(listedIds(), (QStringList{own("a"), own("sub-z"), own("mail")}));
    }

    void aLinkToAnotherFolderForApplicationsRenamesNothing()
    {
        m_disk->writeEntry(m_disk->own(own("a")), "Name=A\nExec=/bin/true");
        m_disk->writeEntry(m_disk->system(own("mail")), "Name=Mail\nExec=/bin/true");
        m_disk->writeEntry(m_disk->system(own("sub/tool")), "Name=Tool\nExec=/bin/true");
        const QString folder = m_disk->path(own("system/applications"));
        QVERIFY(QFile::link(folder, m_disk->path(own("home/applications/all"))));
        start();
        QCOMPARE(listedIds(), (QStringList{own("a"), own("mail"), own("sub-tool")}));
    }

    void whatManyLinksLeadToIsReadOnce()
    {
        m_disk->writeEntry(m_disk->path(own("tree/tool.desktop")), "Name=Tool\nExec=/bin/true");
        m_disk->writeEntry(m_disk->system(own("mail")), "Name=Mail\nExec=/bin/true");
        QVERIFY(QDir().mkpath(m_disk->path(own("home/applications"))));
        for (const char *link : {"home/applications/a", "home/applications/b", "system/applications/c"})
            QVERIFY(QFile::link(m_disk->path(own("tree")), m_disk->path(own(link))));
        start();
        QCOMPARE(listedIds(), (QStringList{own("a-tool"), own("mail")}));
    }

    void itGoesEightFoldersDeep()
    {
        m_disk->writeEntry(m_disk->system(own("1/2/3/4/5/6/7/8/near")), "Name=Near\nExec=/bin/true");
        m_disk->writeEntry(m_disk->system(own("1/2/3/4/5/6/7/8/9/far")), "Name=Far\nExec=/bin/true");
        start();
        QCOMPARE(listedIds(), QStringList(own("1-2-3-4-5-6-7-8-near")));
    }

    void fiveThousandEntriesHoldNobodyUp()
    {
        QDir().mkpath(m_disk->path(own("system/applications")));
        for (int index = 0; index < 5000; ++index)
            m_disk->writeEntry(m_disk->system(QStringLiteral("app-%1").arg(index)),
                "Name=App\nExec=/bin/true %U\nIcon=app\nCategories=Utility;\nComment=" + QByteArray(200, 'c'));
        m_entries = std::make_unique<DesktopEntries>(m_clock, m_disk->places());
        QVERIFY(!m_entries->info(m_disk->system(own("app-4999"))));
        QCOMPARE(listed().size(), 5000);
    }

    void untilTheyAreReadNothingIsKnown()
    {
        const QString path = m_disk->writeEntry(m_disk->own(own("pad")), "Name=Pad\nExec=/bin/true");
        m_entries = std::make_unique<DesktopEntries>(m_clock, m_disk->places());
        QVERIFY(!m_entries->info(path));
        QVERIFY(!m_entries->locate(path, own("pad")));
        QVERIFY(m_entries->catalogue()->records().isEmpty());
        QTRY_VERIFY(m_entries->info(path));
        QCOMPARE(m_entries->locate(path, own("pad")), path);
        QCOMPARE(m_entries->locate(m_disk->own(own("gone")), own("gone")), std::nullopt);
    }

    void theFirstReadingIsNews()
    {
        m_disk->writeEntry(m_disk->own(own("pad")), "Name=Pad\nExec=/bin/true");
        m_entries = std::make_unique<DesktopEntries>(m_clock, m_disk->places());
        QSignalSpy changed(m_entries.get(), &AppBundles::changed);
        bool isLoaded = false;
        m_entries->whenLoaded([&] { isLoaded = true; });
        QVERIFY(!isLoaded);
        QVERIFY(changed.wait());
        QVERIFY(isLoaded);
        QCOMPARE(m_entries->catalogue()->records().size(), 1);
    }

    void oneThatEndsWhileItReadsAnswersAllTheSame()
    {
        m_entries = std::make_unique<DesktopEntries>(m_clock, m_disk->places());
        bool isAnswered = false;
        QCoro::Task<QList<InstalledBundle>> task = m_entries->installed();
        task.then([&]([[maybe_unused]] const QList<InstalledBundle> &bundles) { isAnswered = true; });
        m_entries.reset();
        QVERIFY(isAnswered);
    }

private:
    void start(const QString &desktop = {})
    {
        m_entries = std::make_unique<DesktopEntries>(m_clock, m_disk->places(desktop));
        static_cast<void>(listed());
    }

    [[nodiscard]] QList<InstalledBundle> listed() { return QCoro::waitFor(m_entries->installed()); }

    [[nodiscard]] QStringList listedIds()
    {
        QStringList ids;
        const QList<InstalledBundle> bundles = listed();
        for (const InstalledBundle &bundle : bundles)
            ids.append(bundle.info.identifier.value_or(QString()));
        return ids;
    }

    /// As the batch is over.
    [[nodiscard]] bool hearsOfChange()
    {
        QSignalSpy changed(m_entries.get(), &AppBundles::changed);
        return QTest::qWaitFor([&] { return m_clock.runningTimers() == 1; })
            && (m_clock.advance(500ms), QTest::qWaitFor([&] { return !changed.isEmpty(); }));
    }

    FakeClock m_clock;
    std::unique_ptr<EntriesOnDisk> m_disk;
    std::unique_ptr<DesktopEntries> m_entries;
};

MOORLINE_TEST(InstalledEntriesTest);

} // namespace moorline::test

#include "InstalledEntriesTest.moc"
