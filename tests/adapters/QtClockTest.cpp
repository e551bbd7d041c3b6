#include "platform/qt/QtClock.h"

#include "harness/TestCase.h"
#include "time/TimeZoneScope.h"

#include <QTimer>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// Sees the timers of the program when they fire.
class TimerWatch final : public QObject {
public:
    TimerWatch() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *timer = qobject_cast<QTimer *>(watched);
        if (timer && event->type() == QEvent::Timer)
            types.insert(timer->interval(), timer->timerType());
        return false;
    }

    /// By interval in milliseconds.
    QMap<int, Qt::TimerType> types;
};

} // namespace

class QtClockTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void itsTimersAreNeitherEarlyNorLate()
    {
        TimerWatch watch;
        QtClock clock;
        const auto tick = clock.every(500ms, [] {});
        const auto shot = clock.after(433ms, [] {});
        QTRY_COMPARE(watch.types.value(500, Qt::VeryCoarseTimer), Qt::PreciseTimer);
        QCOMPARE(watch.types.value(433, Qt::VeryCoarseTimer), Qt::PreciseTimer);
    }

    void aTimerMayEndItself()
    {
        QtClock clock;
        int ticks = 0;
        std::unique_ptr<Clock::Timer> timer;
        timer = clock.every(1ms, [&] {
            ++ticks;
            timer.reset();
        });
        bool isOver = false;
        const auto end = clock.after(50ms, [&] { isOver = true; });
        QTRY_VERIFY(isOver);
        QCOMPARE(ticks, 1);
    }

    void itsTimeIsTheSystemsOwn_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<int>("secondsAhead");
        QTest::newRow("a place") << QByteArray("Asia/Kolkata") << 19'800;
        QTest::newRow("a rule") << QByteArray("UTC-3") << 10'800;
        QTest::newRow("unknown") << QByteArray("Mars/Olympus") << 0;
    }
    void itsTimeIsTheSystemsOwn()
    {
        QFETCH(const QByteArray, zone);
        const TimeZoneScope scope(zone);
        const QDateTime now = QtClock().now();
        QCOMPARE(now.timeSpec(), Qt::LocalTime);
        QTEST(now.offsetFromUtc(), "secondsAhead");
    }
};

MOORLINE_TEST(QtClockTest);

#include "QtClockTest.moc"
