#include "platform/linux/x11/UserTime.h"
#include "X11TestCase.h"

#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>

namespace moorline::test {

class UserTimeTest final : public X11TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothingWasDoneAtFirst()
    {
        const UserTime time(*connection);
        QCOMPARE(time.last(), 0U);
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
        const UserTime time(*connection);
        send(QEvent::MouseButtonPress, 100);
        QCOMPARE(time.last(), 100U);
        send(type, timestamp);
        QTEST(time.last(), "last");
    }

    void aDropIsDoneNow()
    {
        const UserTime time(*connection);
        const quint32 before = connection->serverTime();
        const QMimeData data;
        QDropEvent drop({}, Qt::CopyAction, &data, Qt::NoButton, Qt::NoModifier);
        QObject target;
        QCoreApplication::sendEvent(&target, &drop);
        QVERIFY(time.last() >= before);
        QVERIFY(time.last() <= connection->serverTime());
    }

private:
    static void send(QEvent::Type type, quint64 timestamp)
    {
        QMouseEvent event(type, {}, {}, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        event.setTimestamp(timestamp);
        QObject target;
        QCoreApplication::sendEvent(&target, &event);
    }
};

MOORLINE_TEST(UserTimeTest);

} // namespace moorline::test

#include "UserTimeTest.moc"
