#include "theme/Spring.h"

#include "harness/TestCase.h"

#include <cmath>

namespace moorline::test {

namespace {

/// The spring's equation of motion, solved step by step (Runge-Kutta of the fourth order).
double integrated(const Spring &spring, double seconds, double velocity)
{
    const double stiffness = spring.angularFrequency() * spring.angularFrequency();
    const double friction = 2 * spring.damping * spring.angularFrequency();
    const auto acceleration = [&](double x, double v) { return stiffness * (1 - x) - friction * v; };
    constexpr int steps = 4000;
    const double h = seconds / steps;
    double x = 0;
    double v = velocity;
    for (int step = 0; step < steps; ++step) {
        const double a1 = acceleration(x, v);
        const double v2 = v + a1 * h / 2;
        const double a2 = acceleration(x + v * h / 2, v2);
        const double v3 = v + a2 * h / 2;
        const double a3 = acceleration(x + v2 * h / 2, v3);
        const double v4 = v + a3 * h;
        const double a4 = acceleration(x + v3 * h, v4);
        x += h / 6 * (v + 2 * v2 + 2 * v3 + v4);
        v += h / 6 * (a1 + 2 * a2 + 2 * a3 + a4);
    }
    return x;
}

} // namespace

class SpringTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void followsItsEquationOfMotion_data();
    void followsItsEquationOfMotion();
    void startsAtZeroAndComesToRestAtOne_data() { followsItsEquationOfMotion_data(); }
    void startsAtZeroAndComesToRestAtOne();
    void isPurelyExponentialWhenReleasedAtItsOwnPace();
    void doesNotOvershootWhenCriticallyDamped();
    void swingsPastWhenUnderdamped();
    void theFormsMeetAtCriticalDamping();
    void itSettlesWhenLittleIsLeft_data() { followsItsEquationOfMotion_data(); }
    void itSettlesWhenLittleIsLeft();
    void hasNotMovedBeforeItIsLetGo();
    void aSpringWithoutResponseIsThereAtOnce();
};

void SpringTest::followsItsEquationOfMotion_data()
{
    QTest::addColumn<double>("response");
    QTest::addColumn<double>("damping");
    QTest::addColumn<double>("velocity");

    for (const double damping : {0.3, 0.72, 1.0, 1.6}) {
        for (const double velocity : {-4.0, 0.0, 7.0}) {
            QTest::addRow("damping %g, released at %g", damping, velocity) << 0.3 << damping << velocity;
            QTest::addRow("slow, damping %g, released at %g", damping, velocity) << 1.1 << damping << velocity;
        }
    }
}

void SpringTest::followsItsEquationOfMotion()
{
    QFETCH(const double, response);
    QFETCH(const double, damping);
    QFETCH(const double, velocity);

    const Spring spring{response, damping};
    for (const double seconds : {0.01, 0.05, 0.15, 0.4, 1.0}) {
        const double error = std::abs(spring.valueAt(seconds, velocity) - integrated(spring, seconds, velocity));
        QVERIFY2(error < 1e-6, qPrintable(QStringLiteral("off by %1 after %2 s").arg(error).arg(seconds)));
    }
}

void SpringTest::startsAtZeroAndComesToRestAtOne()
{
    QFETCH(const double, response);
    QFETCH(const double, damping);
    QFETCH(const double, velocity);

    const Spring spring{response, damping};
    QCOMPARE(spring.valueAt(0, velocity), 0.0);
    QVERIFY(std::abs(spring.valueAt(1e-9, velocity)) < 1e-7);
    QVERIFY(std::abs(spring.valueAt(20 * response, velocity) - 1) < 1e-9);
}

void SpringTest::isPurelyExponentialWhenReleasedAtItsOwnPace()
{
    const Spring spring{0.35, 1};
    const double pace = spring.angularFrequency();
    double previous = 0;
    for (int step = 1; step <= 100; ++step) {
        const double seconds = step * 0.01;
        const double value = spring.valueAt(seconds, pace);
        QVERIFY(std::abs(value - (1 - std::exp(-pace * seconds))) < 1e-12);
        QVERIFY(value > previous && value < 1);
        previous = value;
    }
}

void SpringTest::doesNotOvershootWhenCriticallyDamped()
{
    const Spring spring{0.35, 1};
    double previous = 0;
    for (int step = 1; step <= 150; ++step) {
        const double value = spring.valueAt(step * 0.01);
        QVERIFY(value > previous && value < 1);
        previous = value;
    }
}

void SpringTest::swingsPastWhenUnderdamped()
{
    const Spring spring{0.35, 0.7};
    double highest = 0;
    for (int step = 1; step <= 100; ++step)
        highest = std::max(highest, spring.valueAt(step * 0.01));
    // The first peak of a damped oscillation: exp(-pi * damping / sqrt(1 - damping^2)) above the rest.
    QVERIFY(std::abs(highest - (1 + std::exp(-M_PI * 0.7 / std::sqrt(1 - 0.49)))) < 1e-3);
}

void SpringTest::theFormsMeetAtCriticalDamping()
{
    for (const double near : {1 - 1e-5, 1 - 1e-7, 1 + 1e-7, 1 + 1e-5}) {
        const double difference = Spring{0.3, near}.valueAt(0.1, 3) - Spring{0.3, 1}.valueAt(0.1, 3);
        QVERIFY(std::abs(difference) < 1e-4);
    }
}

void SpringTest::itSettlesWhenLittleIsLeft()
{
    QFETCH(const double, response);
    QFETCH(const double, damping);

    const Spring spring{response, damping};
    const double settled = spring.settlingSeconds(0.001);
    for (int step = 0; step <= 1000; ++step)
        QVERIFY(std::abs(spring.valueAt(settled + step * response / 100) - 1) <= 0.001);
    // And not long after: within a swing it was farther away.
    double farthest = 0;
    for (int step = 1; step <= 100; ++step)
        farthest = std::max(farthest, std::abs(spring.valueAt(settled - step * response / 100) - 1));
    QVERIFY(farthest > 0.001);
}

void SpringTest::hasNotMovedBeforeItIsLetGo()
{
    QCOMPARE(Spring{}.valueAt(-1, 5), 0.0);
}

void SpringTest::aSpringWithoutResponseIsThereAtOnce()
{
    QCOMPARE((Spring{0, 1}.valueAt(0.001)), 1.0);
    QCOMPARE((Spring{0, 1}.settlingSeconds(0.001)), 0.0);
}

} // namespace moorline::test

using moorline::test::SpringTest;
MOORLINE_TEST(SpringTest);

#include "SpringTest.moc"
