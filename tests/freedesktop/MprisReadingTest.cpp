#include "freedesktop/MprisReading.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace std::chrono_literals;
using Wait = std::optional<std::chrono::milliseconds>;

namespace {

constexpr std::chrono::milliseconds shown = MprisReading::shownTrustTime;

/// One that was asked, and answered at once.
MprisReading readAt(std::chrono::milliseconds uptime)
{
    MprisReading reading(MprisReading::longestGathering);
    reading.begin(uptime);
    static_cast<void>(reading.end(uptime));
    return reading;
}

/// Gathers for `wait`, and is answered at once. Answers when.
std::chrono::milliseconds gather(MprisReading &reading, std::chrono::milliseconds uptime, const Wait &wait)
{
    const std::chrono::milliseconds heard = uptime + wait.value();
    reading.begin(heard);
    static_cast<void>(reading.end(heard));
    return heard;
}

} // namespace

class MprisReadingTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whatIsNotKnownIsAskedAtOnce()
    {
        QVERIFY(MprisReading().isDue(false, MprisReading::trustTime, 0ms));
        // Also when it was not told just now.
        QVERIFY(readAt(5s).isDue(false, MprisReading::trustTime, 5s));
    }

    void whatWasSaidIsTrustedForAWhile_data()
    {
        QTest::addColumn<std::chrono::milliseconds>("trust");
        QTest::addColumn<std::chrono::milliseconds>("expected");
        QTest::newRow("the player that is shown") << MprisReading::shownTrustTime << 1000ms;
        QTest::newRow("others") << MprisReading::trustTime << 10'000ms;
    }
    void whatWasSaidIsTrustedForAWhile()
    {
        QFETCH(const std::chrono::milliseconds, trust);
        QFETCH(const std::chrono::milliseconds, expected);
        const MprisReading reading = readAt(5s);
        QVERIFY(!reading.isDue(true, trust, 5s));
        QVERIFY(!reading.isDue(true, trust, 5s + expected - 1ms));
        QVERIFY(reading.isDue(true, trust, 5s + expected));
    }

    void whatLastsIsTrustedForEver() { QVERIFY(!readAt(5s).isDue(true, std::nullopt, std::chrono::hours(100'000))); }

    void itIsTrustedFromItsAnswerOn()
    {
        MprisReading reading;
        reading.begin(0ms);
        QCOMPARE(reading.end(700ms), Wait());
        QVERIFY(!reading.isDue(true, shown, 1699ms));
        QVERIFY(reading.isDue(true, shown, 1700ms));
    }

    void whoeverIsBeingAskedIsNotAskedTwice()
    {
        MprisReading reading;
        reading.begin(0ms);
        QVERIFY(!reading.isDue(false, shown, 0ms));
        QVERIFY(!reading.isDue(false, shown, 60s));
        static_cast<void>(reading.end(60s));
        QVERIFY(reading.isDue(false, shown, 60s));
    }

    void aChangeIsAskedForOnceItIsGathered()
    {
        MprisReading reading = readAt(0ms);
        QCOMPARE(reading.noteChange(500ms), Wait(50ms));
        QCOMPARE(reading.noteChange(500ms), Wait());
        QCOMPARE(reading.noteChange(549ms), Wait());
        QVERIFY(!reading.isDue(false, shown, 549ms));
        reading.begin(550ms);
        // What was told while it was gathered is answered by this.
        QCOMPARE(reading.end(560ms), Wait());
        QVERIFY(!reading.isDue(true, shown, 1559ms));
        QVERIFY(reading.isDue(true, shown, 1560ms));
    }

    void whatChangesWhileItIsAskedForIsAskedForAgain()
    {
        MprisReading reading;
        reading.begin(0ms);
        QCOMPARE(reading.noteChange(1ms), Wait());
        QCOMPARE(reading.noteChange(2ms), Wait());
        QCOMPARE(reading.end(10ms), Wait(50ms));
        QVERIFY(!reading.isDue(false, shown, 59ms));
        reading.begin(60ms);
        QCOMPARE(reading.end(60ms), Wait());
    }

    void whoGoesOnIsListenedToLessAndLessOften()
    {
        MprisReading reading(2000ms);
        std::chrono::milliseconds now = 0ms;
        for (const auto expected : {50ms, 100ms, 200ms, 400ms, 800ms, 1600ms, 2000ms, 2000ms}) {
            const Wait wait = reading.noteChange(now);
            QCOMPARE(wait, Wait(expected));
            now = gather(reading, now, wait);
        }
        QCOMPARE(MprisReading::longestGathering, 2000ms);
    }

    void newsDuringAQuestionIsToGoOn()
    {
        MprisReading reading(2000ms);
        QCOMPARE(reading.noteChange(0ms), Wait(50ms));
        reading.begin(50ms);
        QCOMPARE(reading.noteChange(60ms), Wait());
        QCOMPARE(reading.end(99ms), Wait(100ms));
        reading.begin(199ms);
        QCOMPARE(reading.noteChange(200ms), Wait());
        // Its answer took so long that it was quiet.
        QCOMPARE(reading.end(299ms), Wait(50ms));
    }

    void whoWasQuietForAsLongIsHeardAtOnceAgain()
    {
        MprisReading reading(2000ms);
        QCOMPARE(gather(reading, 0ms, reading.noteChange(0ms)), 50ms);
        MprisReading goingOn = reading;
        QCOMPARE(goingOn.noteChange(99ms), Wait(100ms));
        QCOMPARE(gather(goingOn, 99ms, 100ms), 199ms);
        QCOMPARE(MprisReading(goingOn).noteChange(298ms), Wait(200ms));
        QCOMPARE(MprisReading(goingOn).noteChange(299ms), Wait(50ms));
        QCOMPARE(reading.noteChange(100ms), Wait(50ms));
    }

    void toBeAskedWithoutAWordIsNotToGoOn()
    {
        MprisReading reading = readAt(1000ms);
        QCOMPARE(reading.noteChange(1001ms), Wait(50ms));
    }

    void whereNothingLongerIsAllowedEachIsTheSame()
    {
        MprisReading reading;
        QCOMPARE(reading.noteChange(0ms), Wait(50ms));
        QCOMPARE(gather(reading, 0ms, 50ms), 50ms);
        QCOMPARE(reading.noteChange(50ms), Wait(50ms));
        QCOMPARE(gather(reading, 50ms, 50ms), 100ms);
        QCOMPARE(reading.noteChange(100ms), Wait(50ms));
    }

    void whatIsDistrustedIsAskedForAtOnce()
    {
        MprisReading reading = readAt(0ms);
        QVERIFY(!reading.isDue(true, shown, 0ms));
        reading.distrust();
        QVERIFY(reading.isDue(true, std::nullopt, 0ms));
        reading.begin(0ms);
        QCOMPARE(reading.end(0ms), Wait());
        QVERIFY(!reading.isDue(true, shown, 0ms));
    }

    void whatIsDistrustedWhileItIsAskedForIsAskedForAgain()
    {
        MprisReading reading;
        reading.begin(0ms);
        reading.distrust();
        QVERIFY(!reading.isDue(true, shown, 9ms));
        QCOMPARE(reading.end(10ms), Wait());
        QVERIFY(reading.isDue(true, shown, 10ms));
        reading.begin(10ms);
        QCOMPARE(reading.end(20ms), Wait());
        QVERIFY(!reading.isDue(true, shown, 20ms));
    }

    void whatIsDistrustedWhileItIsGatheredIsAskedForThen()
    {
        MprisReading reading = readAt(0ms);
        QCOMPARE(reading.noteChange(0ms), Wait(50ms));
        reading.distrust();
        QVERIFY(!reading.isDue(true, shown, 49ms));
        reading.begin(50ms);
        QCOMPARE(reading.end(50ms), Wait());
        QVERIFY(!reading.isDue(true, shown, 50ms));
    }
};

MOORLINE_TEST(MprisReadingTest);
#include "MprisReadingTest.moc"
