#include "platform/linux/LogindSleep.h"

#include "fakes/FakeClock.h"
#include "platform/linux/SystemBus.h"
#include "support/TestCase.h"

#include <QDBusConnection>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

class NoSystemBusTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aBusThatIsNotThereIsToldAsSuch()
    {
        FakeClock clock;
        const SystemBus bus(clock);
        std::optional<bool> isConnected;
        connect(&bus, &SystemBus::opened, this,
            [&isConnected](const QDBusConnection &opened) { isConnected = opened.isConnected(); });
        clock.advance(SystemBus::openingDelay);
        QTRY_VERIFY(isConnected.has_value());
        QVERIFY(!*isConnected);
    }

    void logindIsSilent()
    {
        FakeClock clock;
        SystemBus bus(clock);
        const LogindSleep sleep(bus);
        QSignalSpy woke(&sleep, &LogindSleep::didWake);
        Q_EMIT bus.opened(QDBusConnection::systemBus());
        QCoreApplication::processEvents();
        QCOMPARE(woke.size(), 0);
    }
};

MOORLINE_TEST(NoSystemBusTest);

#include "NoSystemBusTest.moc"
