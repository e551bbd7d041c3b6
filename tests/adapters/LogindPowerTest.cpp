#include "platform/linux/desktop/LogindPower.h"

#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/Bus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString login = QStringLiteral("org.freedesktop.login1");

/// Another program on the system bus, which is one of the test's own here.
QDBusConnection program(const QString &name)
{
    return QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
}

QDBusConnection logind()
{
    return program(QStringLiteral("logind"));
}

/// Returns when everything that this connection sent and received before has been dealt with.
void settle(const QDBusConnection &connection)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    const QDBusMessage answer =
        connection.call(QDBusMessage::createMethodCall(bus, QStringLiteral("/"), bus, QStringLiteral("GetId")));
    QCOMPARE(answer.type(), QDBusMessage::ReplyMessage);
}

/// Returns when it was heard by all who hear it.
void tell(const QDBusConnection &from, const QVariant &isGoingToSleep)
{
    auto signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"));
    signal << isGoingToSleep;
    // What is to hear it has told the bus so by then.
    settle(QDBusConnection::systemBus());
    QVERIFY(from.send(signal));
    settle(from);
    settle(QDBusConnection::systemBus());
    QCoreApplication::processEvents();
}

} // namespace

class LogindPowerTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(!qgetenv("DBUS_SYSTEM_BUS_ADDRESS").isEmpty());
        QCOMPARE(qgetenv("DBUS_SYSTEM_BUS_ADDRESS"), qgetenv("DBUS_SESSION_BUS_ADDRESS"));
        // A connection delivers nothing before the event loop has run once.
        QVERIFY(QDBusConnection::systemBus().isConnected());
        QCoreApplication::processEvents();
    }

    void init()
    {
        TestCase::init();
        m_bus = std::make_unique<Bus>();
        QVERIFY(logind().registerService(login));
    }

    void cleanup()
    {
        logind().unregisterService(login);
        TestCase::cleanup();
    }

    void tellsThatTheMachineWoke()
    {
        const LogindPower sleep(*m_bus, m_clock);
        QSignalSpy woke(&sleep, &LogindPower::didWake);
        openBus();
        tell(logind(), false);
        QCOMPARE(woke.size(), 1);
    }

    void saysNothingWhenItGoesToSleep()
    {
        const LogindPower sleep(*m_bus, m_clock);
        QSignalSpy woke(&sleep, &LogindPower::didWake);
        openBus();
        tell(logind(), true);
        tell(logind(), false);
        QCOMPARE(woke.size(), 1);
    }

    void ignoresWhatIsNoAnswer()
    {
        const LogindPower sleep(*m_bus, m_clock);
        QSignalSpy woke(&sleep, &LogindPower::didWake);
        openBus();
        tell(logind(), QStringLiteral("false"));
        tell(logind(), 0);
        tell(logind(), false);
        QCOMPARE(woke.size(), 1);
    }

    void ignoresStrangers()
    {
        const LogindPower sleep(*m_bus, m_clock);
        QSignalSpy woke(&sleep, &LogindPower::didWake);
        openBus();
        tell(program(QStringLiteral("stranger")), false);
        tell(program(QStringLiteral("stranger")), false);
        tell(logind(), false);
        QCOMPARE(woke.size(), 1);
    }

    void hearsALogindThatStartsAgain()
    {
        const LogindPower sleep(*m_bus, m_clock);
        QSignalSpy woke(&sleep, &LogindPower::didWake);
        openBus();
        logind().unregisterService(login);
        const QDBusConnection next = program(QStringLiteral("next"));
        QVERIFY(QDBusConnection(next).registerService(login));
        tell(next, false);
        QCOMPARE(woke.size(), 1);
        // The one before is a stranger now.
        tell(logind(), false);
        tell(next, false);
        QCOMPARE(woke.size(), 2);
        QVERIFY(QDBusConnection(next).unregisterService(login));
    }

    void hearsALogindThatStartsLater()
    {
        logind().unregisterService(login);
        const LogindPower sleep(*m_bus, m_clock);
        QSignalSpy woke(&sleep, &LogindPower::didWake);
        openBus();
        QVERIFY(logind().registerService(login));
        tell(logind(), false);
        QCOMPARE(woke.size(), 1);
    }

private:
    /// Returns when whoever listens knows who logind is.
    void openBus()
    {
        m_bus->adopt(QDBusConnection::systemBus());
        settle(QDBusConnection::systemBus());
        QCoreApplication::processEvents();
    }

    FakeClock m_clock;
    std::unique_ptr<Bus> m_bus;
};

MOORLINE_TEST(LogindPowerTest);

#include "LogindPowerTest.moc"
