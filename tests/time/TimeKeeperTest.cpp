#include "time/TimeKeeper.h"

#include "fakes/FakeClock.h"
#include "harness/TestCase.h"

#include <QSignalSpy>
#include <QTimeZone>

namespace moorline::test {

using namespace std::chrono_literals;

class TimeKeeperTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void knowsTheTimeBeforeItIsStarted();
    void doesNotTickBeforeItIsStarted();
    void ticksTwiceASecond();
    void ticksOnceHoweverOftenItIsStarted();
    void aTickAtTheSameMomentTellsNobody();
    void followsAClockThatIsSetBack();
    void noticesAnotherTimeZone();
    void stopsWithItsLife();
};

void TimeKeeperTest::knowsTheTimeBeforeItIsStarted()
{
    FakeClock clock;
    QCOMPARE(TimeKeeper(clock).now(), clock.now());
}

void TimeKeeperTest::doesNotTickBeforeItIsStarted()
{
    FakeClock clock;
    TimeKeeper keeper(clock);
    QSignalSpy ticks(&keeper, &TimeKeeper::nowChanged);
    clock.advance(1min);
    QCOMPARE(ticks.size(), 0);
}

void TimeKeeperTest::ticksTwiceASecond()
{
    FakeClock clock;
    TimeKeeper keeper(clock);
    keeper.start();
    QSignalSpy ticks(&keeper, &TimeKeeper::nowChanged);
    clock.advance(499ms);
    QCOMPARE(ticks.size(), 0);
    clock.advance(1ms);
    QCOMPARE(ticks.size(), 1);
    QCOMPARE(keeper.now(), clock.now());
    clock.advance(10s);
    QCOMPARE(ticks.size(), 21);
    QCOMPARE(keeper.now(), clock.now());
}

void TimeKeeperTest::ticksOnceHoweverOftenItIsStarted()
{
    FakeClock clock;
    TimeKeeper keeper(clock);
    keeper.start();
    keeper.start();
    QCOMPARE(clock.repeatingIntervals(), QList<std::chrono::milliseconds>{500ms});
}

void TimeKeeperTest::aTickAtTheSameMomentTellsNobody()
{
    FakeClock clock;
    TimeKeeper keeper(clock);
    keeper.start();
    QSignalSpy ticks(&keeper, &TimeKeeper::nowChanged);
    // Put back by exactly what will have passed by the tick.
    clock.setNow(keeper.now().addMSecs(-500));
    clock.advance(500ms);
    QCOMPARE(ticks.size(), 0);
}

void TimeKeeperTest::followsAClockThatIsSetBack()
{
    FakeClock clock;
    TimeKeeper keeper(clock);
    keeper.start();
    const QDateTime earlier = clock.now().addDays(-3);
    clock.setNow(earlier);
    clock.advance(500ms);
    QCOMPARE(keeper.now(), earlier.addMSecs(500));
}

void TimeKeeperTest::noticesAnotherTimeZone()
{
    FakeClock clock(QDateTime(QDate(2025, 3, 4), QTime(13, 5, 9), Qt::UTC));
    TimeKeeper keeper(clock);
    keeper.start();
    QSignalSpy ticks(&keeper, &TimeKeeper::nowChanged);
    clock.setNow(keeper.now().addMSecs(-500).toTimeZone(QTimeZone("Asia/Tokyo")));
    clock.advance(500ms);
    QCOMPARE(ticks.size(), 1);
    QCOMPARE(keeper.now().time(), QTime(22, 5, 9));
}

void TimeKeeperTest::stopsWithItsLife()
{
    FakeClock clock;
    {
        TimeKeeper keeper(clock);
        keeper.start();
        QCOMPARE(clock.runningTimers(), 1);
    }
    QCOMPARE(clock.runningTimers(), 0);
}

} // namespace moorline::test

using moorline::test::TimeKeeperTest;
MOORLINE_TEST(TimeKeeperTest);

#include "TimeKeeperTest.moc"
