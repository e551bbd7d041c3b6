#include "platform/linux/LogindSleep.h"
#include "support/TestCase.h"

#include <QDBusConnection>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

class NoSystemBusTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(!QDBusConnection::systemBus().isConnected()); }

    void logindIsSilent()
    {
        const LogindSleep sleep;
        QSignalSpy woke(&sleep, &LogindSleep::didWake);
        QCoreApplication::processEvents();
        QCOMPARE(woke.size(), 0);
    }
};

MOORLINE_TEST(NoSystemBusTest);

#include "NoSystemBusTest.moc"
