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
const QString notes = QStringLiteral("org.example.notes");
const QString notesPath = QStringLiteral("/Applications/Notes.app");

/// The set as it stands after a first look.
struct Watching {
    explicit Watching(bool isKnownByWindows = false)
    {
        workspace.isKnownByWindows = isKnownByWindows;
        workspace.launch(mail, mailPath);
        set.refresh();
    }

    [[nodiscard]] QStringList identifiers() const
    {
        QStringList all;
        for (const RunningApplication &application : set.applications())
            all.append(application.bundleIdentifier.value_or(QStringLiteral("none")));
        return all;
    }
    void loseSight()
    {
        workspace.running = std::nullopt;
        set.refresh();
    }

    FakeClock clock;
    FakeWorkspace workspace;
    SteadyRunningSet set{workspace, clock};
    QSignalSpy changes{&set, &SteadyRunningSet::changed};
};

} // namespace

class SteadyRunningSetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void comingAndGoingIsToldAtOnce()
    {
        Watching watching;
        QCOMPARE(watching.changes.count(), 1);
        watching.workspace.launch(notes, notesPath);
        QCOMPARE(watching.identifiers(), (QStringList{mail, notes}));
        watching.workspace.end(mail);
        QCOMPARE(watching.identifiers(), QStringList{notes});
        QCOMPARE(watching.changes.count(), 3);
        QCOMPARE(watching.clock.runningTimers(), 0);
    }

    void thatNothingRunsIsToldOnce()
    {
        FakeClock clock;
        FakeWorkspace workspace;
        workspace.running = std::nullopt;
        SteadyRunningSet set(workspace, clock);
        const QSignalSpy changes(&set, &SteadyRunningSet::changed);
        set.refresh();
        QVERIFY(!set.isKnown());
        QCOMPARE(clock.runningTimers(), 0);
        workspace.running = QList<RunningApplication>();
        set.refresh();
        QVERIFY(set.isKnown());
        set.refresh();
        QCOMPARE(changes.count(), 1);
    }

    void withoutAChangeNothingIsTold()
    {
        Watching watching;
        watching.set.refresh();
        Q_EMIT watching.workspace.applicationLaunched();
        Q_EMIT watching.workspace.applicationTerminated();
        QCOMPARE(watching.changes.count(), 1);
    }

    void whatIsTerminatedIsGone()
    {
        Watching watching;
        watching.workspace.running->first().isTerminated = true;
        watching.set.refresh();
        QCOMPARE(watching.identifiers(), QStringList());
    }

    void whileNobodyCanTellTheLastAnswerHoldsForFiveSeconds()
    {
        Watching watching;
        watching.loseSight();
        watching.clock.advance(4s);
        watching.set.refresh();
        watching.clock.advance(999ms);
        QCOMPARE(watching.identifiers(), QStringList{mail});
        watching.clock.advance(1ms);
        QCOMPARE(watching.identifiers(), QStringList());
        QCOMPARE(watching.changes.count(), 2);
        watching.set.refresh();
        QCOMPARE(watching.changes.count(), 2);
    }

    void anAnswerWithinFiveSecondsIsTheNewTruth()
    {
        Watching watching;
        watching.loseSight();
        watching.clock.advance(4s);
        watching.workspace.running = QList<RunningApplication>();
        watching.workspace.launch(notes, notesPath);
        QCOMPARE(watching.identifiers(), QStringList{notes});
        watching.clock.advance(10s);
        QCOMPARE(watching.identifiers(), QStringList{notes});
        watching.loseSight();
        watching.clock.advance(4999ms);
        QCOMPARE(watching.identifiers(), QStringList{notes});
    }

    void theLastWindowMayBeFollowedByAnother()
    {
        Watching watching(true);
        watching.workspace.end(mail);
        watching.clock.advance(499ms);
        QCOMPARE(watching.identifiers(), QStringList{mail});
        watching.workspace.launch(mail, mailPath);
        watching.clock.advance(10s);
        QCOMPARE(watching.identifiers(), QStringList{mail});
        QCOMPARE(watching.clock.runningTimers(), 0);
    }

    void windowsThatNobodySeesDoNotCount()
    {
        Watching watching(true);
        watching.workspace.running->first().activationPolicy = ActivationPolicy::accessory;
        Q_EMIT watching.workspace.applicationLaunched();
        const auto isSeen = [&watching] {
            const auto &all = watching.set.applications();
            return std::any_of(all.begin(), all.end(),
                [](const auto &one) { return one.activationPolicy == ActivationPolicy::regular; });
        };
        watching.clock.advance(499ms);
        QVERIFY(isSeen());
        watching.clock.advance(1ms);
        QVERIFY(!isSeen());
        QCOMPARE(watching.identifiers(), QStringList{mail});
        // Its end is of no interest any more.
        watching.workspace.end(mail);
        QCOMPARE(watching.identifiers(), QStringList());
    }

    void halfASecondAfterTheLastWindowItIsGone()
    {
        Watching watching(true);
        watching.workspace.end(mail);
        QCOMPARE(watching.changes.count(), 1);
        watching.clock.advance(500ms);
        QCOMPARE(watching.identifiers(), QStringList());
        QCOMPARE(watching.changes.count(), 2);
        QCOMPARE(watching.clock.runningTimers(), 0);
    }

    void looksInBetweenDoNotProlongIt()
    {
        Watching watching(true);
        watching.workspace.end(mail);
        watching.clock.advance(300ms);
        watching.set.refresh();
        watching.clock.advance(200ms);
        QCOMPARE(watching.identifiers(), QStringList());
    }

    void eachHasItsOwnHalfSecond()
    {
        Watching watching(true);
        watching.workspace.launch(notes, notesPath);
        watching.workspace.end(mail);
        watching.clock.advance(200ms);
        watching.workspace.end(notes);
        watching.clock.advance(300ms);
        QCOMPARE(watching.identifiers(), QStringList{notes});
        watching.clock.advance(200ms);
        QCOMPARE(watching.identifiers(), QStringList());
    }

    void oneThatReturnedAndWentAgainHasAnotherHalfSecond()
    {
        Watching watching(true);
        watching.workspace.end(mail);
        watching.clock.advance(400ms);
        watching.workspace.launch(mail, mailPath);
        watching.clock.advance(50ms);
        watching.workspace.end(mail);
        watching.clock.advance(499ms);
        QCOMPARE(watching.identifiers(), QStringList{mail});
        watching.clock.advance(1ms);
        QCOMPARE(watching.identifiers(), QStringList());
    }

    void nothingIsKeptThatWentWhileNobodyCouldTell()
    {
        Watching watching(true);
        watching.workspace.end(mail);
        watching.loseSight();
        watching.clock.advance(5s);
        QCOMPARE(watching.identifiers(), QStringList());
        QCOMPARE(watching.clock.runningTimers(), 0);
    }
};

MOORLINE_TEST(SteadyRunningSetTest);
#include "SteadyRunningSetTest.moc"
