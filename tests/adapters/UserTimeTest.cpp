#include "platform/linux/x11/UserTime.h"
#include "X11TestCase.h"
#include "fakes/FakeClock.h"
#include "platform/linux/apps/PresentTime.h"

#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>

namespace moorline::test {

class UserTimeTest final : public X11TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothingWasDoneAtFirst()
    {
        const UserTime time(*connection, m_clock);
        QVERIFY(!time.last());
    }

    void theLastDeedCounts_data()
    {
        QTest::addColumn<QEvent::Type>("type");
        QTest::addColumn<quint64>("timestamp");
        QTest::addColumn<quint32>("last");

        QTest::newRow("a press") << QEvent::MouseButtonPress << quint64(4711) << 4711U;
        QTest::newRow("a release") << QEvent::MouseButtonRelease << quint64(4711) << 4711U;
        QTest::newRow("the pointer passes") << QEvent::MouseMove << quint64(4711) << 100U;
        QTest::newRow("made by the program") << QEvent::MouseButtonPress << quint64(0) << 100U;
    }

    void theLastDeedCounts()
    {
        QFETCH(QEvent::Type, type);
        QFETCH(quint64, timestamp);
        const UserTime time(*connection, m_clock);
        send(QEvent::MouseButtonPress, 100);
        QCOMPARE(time.last()->time, 100U);
        send(type, timestamp);
        QTEST(time.last()->time, "last");
    }

    void aDropIsDoneNow()
    {
        const UserTime time(*connection, m_clock);
        const quint32 before = connection->serverTime();
        const QMimeData data;
        QDropEvent drop({}, Qt::CopyAction, &data, Qt::NoButton, Qt::NoModifier);
        QObject target;
        QCoreApplication::sendEvent(&target, &drop);
        QVERIFY(time.last()->time >= before);
        QVERIFY(time.last()->time <= connection->serverTime());
    }

    void aDeedGrowsOld()
    {
        const UserTime time(*connection, m_clock);
        send(QEvent::MouseButtonPress, 100);
        m_clock.advance(std::chrono::seconds(3));
        QCOMPARE(time.last()->age, std::chrono::milliseconds(3000));
        send(QEvent::KeyPress, 200);
        QCOMPARE(time.last()->age, std::chrono::milliseconds(0));
    }

    void whatIsAskedForLongAfterTheLastDeedIsAskedForNow()
    {
        const UserTime time(*connection, m_clock);
        send(QEvent::MouseButtonRelease, 100);
        m_clock.advance(std::chrono::seconds(2));
        QCOMPARE(presentTime(time, *connection), 100U);
        m_clock.advance(std::chrono::milliseconds(1));
        const quint32 before = connection->serverTime();
        QVERIFY(presentTime(time, *connection) >= before);
    }

    void whatIsAskedForWithoutADeedIsAskedForNow()
    {
        const UserTime time(*connection, m_clock);
        const quint32 before = connection->serverTime();
        QVERIFY(presentTime(time, *connection) >= before);
    }

private:
    static void send(QEvent::Type type, quint64 timestamp)
    {
        QMouseEvent event(type, {}, {}, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        event.setTimestamp(timestamp);
        QObject target;
        QCoreApplication::sendEvent(&target, &event);
    }

    FakeClock m_clock;
};

MOORLINE_TEST(UserTimeTest);

} // namespace moorline::test

#include "UserTimeTest.moc"
