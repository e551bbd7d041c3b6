#include "theme/SpringMotion.h"

#include "fakes/FakeClock.h"
#include "harness/TestCase.h"

#include <cmath>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

struct Fixture {
    explicit Fixture(const Spring &asked = {.response = 0.25, .damping = 0.7})
        : spring(asked)
    {
    }

    FakeClock clock;
    Spring spring;
    int moves = 0;
    SpringMotion motion{clock, spring, 1, [this] { ++moves; }};
};

bool isNear(double one, double other)
{
    return std::abs(one - other) < 1e-9;
}

} // namespace

class SpringMotionTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void itRestsWhereItBegan()
    {
        Fixture fixture;
        fixture.clock.advance(1s);
        QCOMPARE(fixture.motion.value(), 1.0);
        QCOMPARE(fixture.moves, 0);
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }

    void itFollowsItsSpringSixtyTimesASecond()
    {
        Fixture fixture;
        fixture.motion.moveTo(3);
        QCOMPARE(fixture.clock.repeatingIntervals(), QList{16ms});
        for (int step = 1; step <= 10; ++step) {
            fixture.clock.advance(16ms);
            QCOMPARE(fixture.moves, step);
            QVERIFY(isNear(fixture.motion.value(), 1 + 2 * fixture.spring.valueAt(step * 0.016)));
        }
    }

    void itComesToRestWhereItWasSent()
    {
        Fixture fixture;
        fixture.motion.moveTo(3);
        QCOMPARE(fixture.motion.target(), 3.0);
        QVERIFY(fixture.motion.isMoving());
        fixture.clock.advance(1s);
        QCOMPARE(fixture.motion.value(), 3.0);
        QVERIFY(!fixture.motion.isMoving());
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }

    void sentWhereItIsOnItsWayToItGoesOn()
    {
        Fixture fixture;
        fixture.motion.moveTo(3);
        fixture.clock.advance(64ms);
        fixture.motion.moveTo(3);
        fixture.clock.advance(16ms);
        QVERIFY(isNear(fixture.motion.value(), 1 + 2 * fixture.spring.valueAt(0.08)));
    }

    void sentBackItKeepsItsSpeed()
    {
        Fixture fixture;
        fixture.motion.moveTo(2);
        fixture.clock.advance(64ms);
        const double there = fixture.motion.value();
        fixture.motion.moveTo(1);
        QCOMPARE(fixture.motion.value(), there);
        // Let go where it was, it would only come back.
        fixture.clock.advance(16ms);
        QVERIFY(fixture.motion.value() > there);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.motion.value(), 1.0);
    }

    void putSomewhereItIsThereAtOnce()
    {
        Fixture fixture;
        fixture.motion.moveTo(3);
        fixture.clock.advance(64ms);
        fixture.moves = 0;
        fixture.motion.jumpTo(5);
        QCOMPARE(fixture.motion.value(), 5.0);
        QCOMPARE(fixture.motion.target(), 5.0);
        QCOMPARE(fixture.moves, 1);
        QCOMPARE(fixture.clock.runningTimers(), 0);
        fixture.motion.jumpTo(5);
        QCOMPARE(fixture.moves, 1);
    }

    void whoeverHearsOfItMayEndIt()
    {
        FakeClock clock;
        std::unique_ptr<SpringMotion> motion;
        motion = std::make_unique<SpringMotion>(clock, Spring{}, 0, [&motion] { motion.reset(); });
        motion->moveTo(1);
        clock.advance(16ms);
        QVERIFY(!motion);
        QCOMPARE(clock.runningTimers(), 0);
    }
};

MOORLINE_TEST(SpringMotionTest);

} // namespace moorline::test

#include "SpringMotionTest.moc"
