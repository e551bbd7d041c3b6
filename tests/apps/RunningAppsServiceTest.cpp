#include "apps/RunningAppsService.h"

#include "apps/SteadyRunningSet.h"
#include "fakes/FakeApplications.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QString mail = QStringLiteral("org.example.mail");
const QString mailPath = QStringLiteral("/Applications/Mail.app");

struct Watching {
    FakeClock clock;
    FakeWorkspace workspace;
    SteadyRunningSet set{workspace, clock};
    RunningAppsService service{set, clock};
    QSignalSpy changes{&service, &RunningAppsService::runningBundleIDsChanged};
};

} // namespace

class RunningAppsServiceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whatRunsAtTheStartIsKnownAtOnce()
    {
        Watching watching;
        watching.workspace.launch(mail, mailPath);
        watching.service.start();
        QCOMPARE(watching.service.runningBundleIDs(), QSet<QString>{mail});
        QVERIFY(watching.service.isRunning(mail));
        QVERIFY(!watching.service.isRunning(QStringLiteral("org.example.notes")));
        QVERIFY(!watching.service.isRunning(std::nullopt));
    }

    void thisApplicationRunsToo()
    {
        Watching watching;
        watching.workspace.launch(QStringLiteral("app.moorline.Moorline"), QStringLiteral("/Moorline.app"));
        watching.service.start();
        QVERIFY(watching.service.isRunning(QStringLiteral("app.moorline.Moorline")));
    }

    void onlyRegularApplicationsThatLiveAndHaveAnIdentifierCount()
    {
        Watching watching;
        watching.workspace.running = QList<RunningApplication>{
            {.id = 1, .bundleIdentifier = QStringLiteral("a"), .activationPolicy = ActivationPolicy::accessory},
            {.id = 2, .bundleIdentifier = QStringLiteral("b"), .activationPolicy = ActivationPolicy::prohibited},
            {.id = 3, .bundleIdentifier = QStringLiteral("c"), .isTerminated = true},
            {.id = 4},
            {.id = 5, .bundleIdentifier = mail},
        };
        watching.service.start();
        QCOMPARE(watching.service.runningBundleIDs(), QSet<QString>{mail});
    }

    void comingAndGoingIsPublishedAtOnce()
    {
        Watching watching;
        watching.service.start();
        watching.workspace.launch(mail, mailPath);
        QVERIFY(watching.service.isRunning(mail));
        watching.workspace.end(mail);
        QVERIFY(!watching.service.isRunning(mail));
        QCOMPARE(watching.changes.count(), 2);
    }

    void whatWasNotToldIsSeenWithinTwoSeconds()
    {
        Watching watching;
        watching.service.start();
        watching.workspace.running->append({.id = 1, .bundleIdentifier = mail});
        watching.clock.advance(1999ms);
        QVERIFY(!watching.service.isRunning(mail));
        watching.clock.advance(1ms);
        QVERIFY(watching.service.isRunning(mail));
        QCOMPARE(watching.clock.repeatingIntervals(), QList<std::chrono::milliseconds>{2000ms});
    }

    void withoutAChangeNothingIsPublished()
    {
        Watching watching;
        watching.workspace.launch(mail, mailPath);
        watching.service.start();
        QCOMPARE(watching.changes.count(), 1);
        watching.clock.advance(60s);
        // A second instance of the same application.
        watching.workspace.launch(mail, mailPath);
        QCOMPARE(watching.changes.count(), 1);
    }

    void aLookIsOneQuestion()
    {
        Watching watching;
        watching.service.start();
        const int asked = watching.workspace.timesAsked;
        watching.clock.advance(20s);
        QCOMPARE(watching.workspace.timesAsked - asked, 10);
    }
};

MOORLINE_TEST(RunningAppsServiceTest);
#include "RunningAppsServiceTest.moc"
