#include "platform/linux/desktop/LogindPower.h"

#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/SystemBus.h"

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
        const LogindPower sleep(bus);
        QSignalSpy woke(&sleep, &LogindPower::didWake);
        Q_EMIT bus.opened(QDBusConnection::systemBus());
        QCoreApplication::processEvents();
        QCOMPARE(woke.size(), 0);
    }
};

MOORLINE_TEST(NoSystemBusTest);

#include "NoSystemBusTest.moc"
