#include "apps/Launching.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QString path = QStringLiteral("/Applications/Slow.app");
const QString identifier = QStringLiteral("org.example.slow");
const AppShortcut slow{path, identifier, QStringLiteral("Slow")};
const AppShortcut finder{QStringLiteral("/System/Library/CoreServices/Finder.app"), QStringLiteral("com.apple.finder"),
    QStringLiteral("Finder")};

/// With an application that takes its time.
struct Desk : Launching {
    Desk() { bundles.bundles[path] = {identifier, std::nullopt, std::nullopt}; }

    [[nodiscard]] qsizetype starts() const { return workspace.openings.size(); }
};

} // namespace

class PendingLaunchesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void clicksBeforeTheFirstWindowStartNothingMore()
    {
        Desk desk;
        desk.launcher.launch(slow);
        desk.clock.advance(9999ms);
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 1);
    }

    void afterTenSecondsItIsTriedAgain()
    {
        Desk desk;
        desk.launcher.launch(slow);
        desk.clock.advance(10s);
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 2);
    }

    void anImpatientClickDoesNotProlongTheWait()
    {
        Desk desk;
        desk.launcher.launch(slow);
        desk.clock.advance(6s);
        desk.launcher.launch(slow);
        desk.clock.advance(4s);
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 2);
    }

    void otherApplicationsStart()
    {
        Desk desk;
        desk.launcher.launch(slow);
        desk.launcher.launch({QStringLiteral("/Applications/Other.app"), std::nullopt, QStringLiteral("Other")});
        QCOMPARE(desk.starts(), 2);
    }

    void theSameApplicationAtAnotherPathDoesNotStart()
    {
        Desk desk;
        const QString copy = QStringLiteral("/home/me/Applications/Slow.app");
        desk.bundles.bundles[copy] = {identifier, std::nullopt, std::nullopt};
        desk.launcher.openRegularApp(path);
        desk.launcher.openRegularApp(copy);
        QCOMPARE(desk.starts(), 1);
    }

    void withTheFirstWindowTheWaitIsOver()
    {
        Desk desk;
        desk.launcher.launch(slow);
        desk.workspace.launch(identifier, path);
        desk.workspace.end(identifier);
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 2);
    }

    void aWindowIsKnownByItsPathToo()
    {
        Desk desk;
        desk.launcher.launch(slow);
        desk.workspace.launch(QStringLiteral("org.example.alias"), path);
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 2);
    }

    void whatTheUserDoesNotSeeIsNoFirstWindow_data()
    {
        QTest::addColumn<RunningApplication>("application");
        QTest::newRow("another application")
            << RunningApplication{.id = 1, .bundleIdentifier = QStringLiteral("org.example.other")};
        QTest::newRow("no regular application") << RunningApplication{
            .id = 1, .bundleIdentifier = identifier, .activationPolicy = ActivationPolicy::accessory};
        QTest::newRow("one that ended") << RunningApplication{
            .id = 1, .bundleIdentifier = identifier, .isTerminated = true};
        QTest::newRow("nothing that has a name") << RunningApplication{.id = 1};
    }

    void whatTheUserDoesNotSeeIsNoFirstWindow()
    {
        QFETCH(RunningApplication, application);
        Desk desk;
        desk.launcher.launch(slow);
        desk.workspace.running->append(application);
        Q_EMIT desk.workspace.applicationLaunched();
        desk.workspace.running->clear();
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 1);
    }

    void whatEndedBeforeAnythingWasSeenIsStartedAgain()
    {
        Desk desk;
        desk.launcher.launch(slow);
        Q_EMIT desk.workspace.launchEnded(QStringLiteral("/Applications/Other.app"));
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 1);
        Q_EMIT desk.workspace.launchEnded(path);
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 2);
    }

    void aFailureEndsTheWait()
    {
        Desk desk;
        desk.launcher.launch(slow);
        QTest::ignoreMessage(QtInfoMsg, "Moorline: failed to open Slow.app: no");
        desk.workspace.openings.last().opened(QStringLiteral("no"));
        QCoreApplication::processEvents();
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 2);
    }

    void aSuccessIsNoFirstWindow()
    {
        Desk desk;
        desk.launcher.launch(slow);
        desk.workspace.openings.last().opened(std::nullopt);
        QCoreApplication::processEvents();
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 1);
    }

    void filesStartAnApplicationAsAClickDoes()
    {
        Desk desk;
        const QList<QUrl> files{QUrl::fromLocalFile(QStringLiteral("/a"))};
        desk.launcher.open(files, slow);
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 1);
        // They are not lost on one that is being started.
        desk.launcher.open(files, slow);
        QCOMPARE(desk.starts(), 2);
    }

    void filesForWhatRunsStartNothing()
    {
        Desk desk;
        desk.workspace.launch(identifier, path);
        desk.launcher.open({QUrl::fromLocalFile(QStringLiteral("/a"))}, slow);
        desk.workspace.end(identifier);
        desk.launcher.launch(slow);
        QCOMPARE(desk.starts(), 2);
    }

    void aFileManagerThatOnlyDrawsTheDesktopIsStartedOnceToo()
    {
        Desk desk;
        desk.workspace.launch(QStringLiteral("com.apple.finder"), QStringLiteral("/files.app"));
        desk.workspace.running->first().activationPolicy = ActivationPolicy::accessory;
        desk.running.refresh();
        desk.workspace.isKnownByWindows = true;
        desk.launcher.launch(finder);
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 1);
    }

    void aFileManagerThatCannotBeShownIsAskedAgainAtTheNextClick()
    {
        Desk desk;
        desk.launcher.launch(finder);
        QTest::ignoreMessage(QtInfoMsg, "Moorline: failed to open com.apple.finder: there is none");
        desk.fileManager.cameForward(QStringLiteral("there is none"));
        QCoreApplication::processEvents();
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 2);
        desk.fileManager.cameForward(std::nullopt);
        QCoreApplication::processEvents();
        // It will show itself.
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 2);
    }

    void theFileManagerIsStartedOnce()
    {
        Desk desk;
        const QString files = QStringLiteral("/usr/share/applications/files.app");
        desk.workspace.installed[QStringLiteral("com.apple.finder")] = files;
        desk.launcher.launch(finder);
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 1);
        Q_EMIT desk.workspace.launchEnded(files);
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 2);
        desk.workspace.launch(QStringLiteral("com.apple.finder"), files);
        desk.launcher.launch(finder);
        QCOMPARE(desk.fileManager.timesForward, 3);
    }
};

MOORLINE_TEST(PendingLaunchesTest);
#include "PendingLaunchesTest.moc"
