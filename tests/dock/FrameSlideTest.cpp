#include "dock/FrameSlide.h"

#include "fakes/FakeClock.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QRectF shown(490, -11, 460, 98);
const QRectF hidden(490, -102, 460, 98);

} // namespace

class FrameSlideTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void endsExactlyAtItsDestinationAndRests()
    {
        FakeClock clock;
        QList<QRectF> frames;
        FrameSlide slide(clock, [&frames](const QRectF &frame) { frames.append(frame); });
        slide.start(shown, hidden);
        QCOMPARE(slide.destination(), hidden);
        clock.advance(1s);
        QCOMPARE(frames.last(), hidden);
        QCOMPARE(slide.destination(), std::nullopt);
        QCOMPARE(clock.runningTimers(), 0);
    }

    void takesEighteenHundredthsOfASecond()
    {
        FakeClock clock;
        QRectF frame;
        FrameSlide slide(clock, [&frame](const QRectF &next) { frame = next; });
        slide.start(shown, hidden);
        clock.advance(160ms);
        QVERIFY(frame != hidden);
        clock.advance(32ms);
        QCOMPARE(frame, hidden);
    }

    /// The standard ease-out of 0.18 s is at 0.401, 0.720 and 0.938 of the way after 48, 96 and 144 ms.
    void followsTheStandardCurve_data()
    {
        QTest::addColumn<int>("elapsed");
        QTest::addColumn<qreal>("y");
        QTest::newRow("48 ms") << 48 << -47.47;
        QTest::newRow("96 ms") << 96 << -76.49;
        QTest::newRow("144 ms") << 144 << -96.33;
    }

    void followsTheStandardCurve()
    {
        QFETCH(int, elapsed);
        QFETCH(qreal, y);
        FakeClock clock;
        QRectF frame;
        FrameSlide slide(clock, [&frame](const QRectF &next) { frame = next; });
        slide.start(shown, hidden);
        clock.advance(std::chrono::milliseconds(elapsed));
        QVERIFY2(qAbs(frame.y() - y) < 0.05, qPrintable(QString::number(frame.y())));
    }

    void easesOut()
    {
        FakeClock clock;
        QList<qreal> steps{shown.y()};
        FrameSlide slide(clock, [&steps](const QRectF &frame) { steps.append(frame.y()); });
        slide.start(shown, hidden);
        clock.advance(1s);
        QVERIFY(steps.size() >= 11);
        // The last step covers what is left when the time is up.
        for (qsizetype i = 2; i < steps.size() - 1; ++i) {
            QVERIFY(steps[i] < steps[i - 1]);
            QVERIFY(steps[i - 1] - steps[i] < steps[i - 2] - steps[i - 1]);
        }
    }

    void theLastStepIsTooSmallToSee()
    {
        FakeClock clock;
        QList<qreal> steps;
        FrameSlide slide(clock, [&steps](const QRectF &frame) { steps.append(frame.y()); });
        slide.start(shown, hidden);
        clock.advance(1s);
        QVERIFY(qAbs(steps[steps.size() - 2] - steps.last()) < 1);
    }

    void stoppingLeavesTheFrameWhereItIs()
    {
        FakeClock clock;
        int steps = 0;
        FrameSlide slide(clock, [&steps](const QRectF &) { ++steps; });
        slide.start(shown, hidden);
        clock.advance(50ms);
        const int taken = steps;
        slide.stop();
        clock.advance(1s);
        QCOMPARE(steps, taken);
    }
};

MOORLINE_TEST(FrameSlideTest);

#include "FrameSlideTest.moc"
