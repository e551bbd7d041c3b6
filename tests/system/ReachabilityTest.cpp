#include "system/Reachability.h"

#include "fakes/FakeClock.h"
#include "fakes/FakeLocation.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

struct Fixture {
    explicit Fixture(bool isReachable)
    {
        network.isUp = isReachable;
        reachability = std::make_unique<Reachability>(network, clock);
        told = std::make_unique<QSignalSpy>(reachability.get(), &Reachability::becameReachable);
    }

    FakeClock clock;
    FakeNetwork network;
    std::unique_ptr<Reachability> reachability;
    std::unique_ptr<QSignalSpy> told;
};

} // namespace

class ReachabilityTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aWayAfterThereWasNoneIsToldTwoSecondsLater()
    {
        Fixture fixture(false);
        fixture.network.change(true);
        fixture.clock.advance(1999ms);
        QCOMPARE(fixture.told->size(), 0);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.told->size(), 1);
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }

    void howThingsAreAtTheStartIsNoNews()
    {
        for (const bool isReachable : {false, true}) {
            Fixture fixture(isReachable);
            fixture.clock.advance(1min);
            fixture.network.change(isReachable);
            fixture.clock.advance(1min);
            QCOMPARE(fixture.told->size(), 0);
        }
    }

    void everyReturnIsTold()
    {
        Fixture fixture(true);
        for (int times = 1; times <= 3; ++times) {
            fixture.network.change(false);
            fixture.clock.advance(1min);
            fixture.network.change(true);
            fixture.clock.advance(1min);
            QCOMPARE(fixture.told->size(), times);
        }
    }

    void aWayThatWasLostForAMomentIsToldWhenItIsBack()
    {
        Fixture fixture(true);
        fixture.network.change(false);
        fixture.clock.advance(1s);
        fixture.network.change(true);
        fixture.clock.advance(3s);
        QCOMPARE(fixture.told->size(), 1);
    }

    void aWayThatWasLostWhileThingsSettledIsToldWhenItIsBack()
    {
        Fixture fixture(true);
        fixture.network.change(true);
        fixture.clock.advance(1s);
        fixture.network.change(false);
        fixture.clock.advance(2s);
        fixture.network.change(true);
        fixture.clock.advance(1min);
        QCOMPARE(fixture.told->size(), 1);
    }

    void aWayThatIsReplacedAtOnceIsNoNews()
    {
        Fixture fixture(true);
        for (int times = 0; times < 3; ++times) {
            fixture.network.change(true);
            fixture.clock.advance(1min);
        }
        QCOMPARE(fixture.told->size(), 0);
    }

    void changesAreWaitedForUntilTheySettle()
    {
        Fixture fixture(false);
        fixture.network.change(false);
        fixture.clock.advance(1900ms);
        fixture.network.change(true);
        fixture.clock.advance(2099ms);
        QCOMPARE(fixture.told->size(), 0);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.told->size(), 1);
    }

    void aStormIsWaitedForTenSeconds()
    {
        Fixture fixture(false);
        for (int passed = 0; passed < 9; ++passed) {
            fixture.network.change(true);
            fixture.clock.advance(1s);
            QCOMPARE(fixture.told->size(), 0);
            QVERIFY(!fixture.network.isListening);
        }
        fixture.network.change(true);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.told->size(), 1);
        QVERIFY(fixture.network.isListening);
    }
};

MOORLINE_TEST(ReachabilityTest);

#include "ReachabilityTest.moc"
