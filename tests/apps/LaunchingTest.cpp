#include "apps/NotesDesk.h"
#include "harness/TestCase.h"

#include <thread>
#include <utility>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class LaunchingTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whatDoesNotRunIsStarted()
    {
        NotesDesk desk;
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.size(), 1);
        QCOMPARE(desk.workspace.openings.first().path, notesPath);
        QVERIFY(desk.workspace.openings.first().files.isEmpty());
        QVERIFY(desk.workspace.activated.isEmpty());
    }

    void whatRunsComesForward()
    {
        NotesDesk desk;
        const auto first = desk.workspace.launch(notesIdentifier, notesPath);
        desk.workspace.launch(notesIdentifier, notesPath);
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.activated, QList<RunningApplication>{first});
        QVERIFY(desk.workspace.openings.isEmpty());
    }

    void aTerminatedInstanceDoesNotCount()
    {
        NotesDesk desk;
        desk.workspace.launch(notesIdentifier, notesPath);
        desk.workspace.running->first().isTerminated = true;
        const auto second = desk.workspace.launch(notesIdentifier, notesPath);
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.activated, QList<RunningApplication>{second});
        desk.workspace.running->last().isTerminated = true;
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.size(), 1);
    }

    void anAccessoryComesForwardUnlessItIsKnownByWindowsThatItHasNot()
    {
        NotesDesk desk;
        desk.workspace.launch(notesIdentifier, notesPath);
        desk.workspace.running->first().activationPolicy = ActivationPolicy::accessory;
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.activated.size(), 1);
        desk.running.refresh();
        desk.workspace.isKnownByWindows = true;
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.activated.size(), 1);
        QCOMPARE(desk.workspace.openings.size(), 1);
    }

    void whoRunsIsToldByWhatTheBundleSaysNow()
    {
        NotesDesk desk;
        const AppShortcut stale{notesPath, QStringLiteral("org.example.old"), QStringLiteral("Notes")};
        const auto running = desk.workspace.launch(notesIdentifier, notesPath);
        desk.launcher.launch(stale);
        QCOMPARE(desk.workspace.activated, QList<RunningApplication>{running});
    }

    void aBundleWithoutIdentifierIsAlwaysStarted()
    {
        NotesDesk desk;
        desk.bundles.bundles[notesPath].identifier = std::nullopt;
        desk.workspace.running->append({.id = 7, .bundlePath = notesPath});
        desk.launcher.launch({notesPath, std::nullopt, QStringLiteral("Notes")});
        QCOMPARE(desk.workspace.openings.size(), 1);
        QVERIFY(desk.workspace.activated.isEmpty());
    }

    void whileNobodyCanTellWhatRunsItIsStarted()
    {
        NotesDesk desk;
        desk.workspace.running = std::nullopt;
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.size(), 1);
    }

    void whatIsOnlyOutOfSightWhileNoWindowManagerRunsIsNotStartedAgain()
    {
        NotesDesk desk;
        desk.workspace.isKnownByWindows = true;
        desk.workspace.launch(notesIdentifier, notesPath);
        const auto before = std::exchange(desk.workspace.running, std::nullopt);
        desk.running.refresh();
        desk.launcher.launch(notes);
        QVERIFY(desk.workspace.openings.isEmpty());
        QVERIFY(desk.workspace.activated.isEmpty());
        desk.workspace.running = before;
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.activated, *before);
        desk.workspace.running = std::nullopt;
        desk.running.refresh();
        desk.clock.advance(5s);
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.size(), 1);
    }

    void whatLostItsSplashScreenIsNotStartedAgain()
    {
        NotesDesk desk;
        desk.workspace.isKnownByWindows = true;
        desk.workspace.launch(notesIdentifier, notesPath);
        desk.workspace.end(notesIdentifier);
        desk.clock.advance(499ms);
        desk.launcher.launch(notes);
        QVERIFY(desk.workspace.openings.isEmpty());
        desk.clock.advance(1ms);
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.size(), 1);
    }

    void whatEndsForGoodIsStartedAgainAtOnce()
    {
        NotesDesk desk;
        desk.workspace.launch(notesIdentifier, notesPath);
        desk.running.refresh();
        desk.workspace.running->clear();
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.size(), 1);
    }

    void anAccessoryIsNotOutOfSight()
    {
        NotesDesk desk;
        desk.workspace.isKnownByWindows = true;
        desk.workspace.launch(notesIdentifier, notesPath);
        desk.workspace.running->first().activationPolicy = ActivationPolicy::accessory;
        desk.running.refresh();
        desk.clock.advance(1s);
        desk.workspace.running = std::nullopt;
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.size(), 1);
    }

    void theFileManagerIsNotStartedAgainWhileItIsOnlyOutOfSight()
    {
        NotesDesk desk;
        desk.workspace.isKnownByWindows = true;
        desk.workspace.launch(finder.bundleIdentifier.value(), finder.path);
        desk.workspace.end(finder.bundleIdentifier.value());
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 0);
        desk.clock.advance(500ms);
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 1);
    }

    void aShortcutIsLookedForWhereItsApplicationIsNow()
    {
        NotesDesk desk;
        const QString moved = QStringLiteral("/home/me/Applications/Notes.app");
        desk.bundles.places[notesIdentifier] = moved;
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.last().path, moved);
        desk.launcher.open(files({QStringLiteral("/a")}), notes);
        QCOMPARE(desk.workspace.openings.last().path, moved);
    }

    void aFailureIsLogged()
    {
        NotesDesk desk;
        desk.launcher.launch(notes);
        announce("Moorline: failed to open My Notes.app: it is broken");
        desk.failLast(QStringLiteral("it is broken"));
    }

    void aGoneApplicationIsTriedWhereItWas()
    {
        NotesDesk desk;
        desk.bundles.bundles.clear();
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.last().path, notesPath);
        announce("Moorline: failed to open My Notes.app: gone");
        desk.failLast(QStringLiteral("gone"));
    }

    void aFailureMayBeToldOnAnotherThread()
    {
        NotesDesk desk;
        desk.launcher.launch(notes);
        announce("Moorline: failed to open My Notes.app: it is broken");
        std::thread([&desk] { desk.workspace.openings.last().opened(QStringLiteral("it is broken")); }).join();
        QCoreApplication::processEvents();
        desk.launcher.launch(notes);
        QCOMPARE(desk.workspace.openings.size(), 2);
    }

    void aFailureMayOutliveTheLauncher()
    {
        Workspace::Opened opened;
        {
            NotesDesk desk;
            desk.launcher.launch(notes);
            opened = desk.workspace.openings.last().opened;
        }
        announce("Moorline: failed to open My Notes.app: late");
        opened(QStringLiteral("late"));
        QCoreApplication::processEvents();
    }

    void finderComesForwardByItself()
    {
        NotesDesk desk;
        desk.workspace.launch(finder.bundleIdentifier.value(), finder.path);
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 1);
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 2);
        QVERIFY(desk.workspace.openings.isEmpty());
        QVERIFY(desk.workspace.activated.isEmpty());
    }

    void finderIsKnownByItsExactIdentifier()
    {
        NotesDesk desk;
        desk.launcher.launch({finder.path, QStringLiteral("com.apple.Finder"), finder.name});
        desk.launcher.launch({finder.path + u'/', std::nullopt, finder.name});
        QCOMPARE(desk.fileManager.timesForward, 0);
        QCOMPARE(desk.workspace.openings.size(), 2);
    }
};

MOORLINE_TEST(LaunchingTest);
#include "LaunchingTest.moc"
