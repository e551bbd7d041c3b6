#include "platform/linux/bus/BusKeeper.h"

#include "PrivateBus.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/BusGate.h"
#include "platform/linux/bus/FollowedName.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// What a process takes for its buses it settles once.
PrivateBus &privateBus()
{
    static PrivateBus bus;
    return bus;
}

/// A bus that is opened at once.
struct Kept {
    explicit Kept(BusKind kind)
        : keeper(kind, bus, clock, 0ms)
    {
        clock.advance(0ms);
    }

    FakeClock clock;
    Bus bus;
    BusKeeper keeper;
};

const QString name = QStringLiteral("app.moorline.Test");

} // namespace

Q_DECLARE_METATYPE(moorline::BusKind)

class BusKeeperTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", privateBus().address());
        qputenv("DBUS_SESSION_BUS_ADDRESS", privateBus().address());
    }

    void cleanup()
    {
        privateBus().end();
        TestCase::cleanup();
    }

    void opensAfterItsDelayAndNotBefore_data() { kinds(); }
    void opensAfterItsDelayAndNotBefore()
    {
        QFETCH(BusKind, kind);
        QVERIFY(privateBus().start());
        FakeClock clock;
        Bus bus;
        const BusKeeper keeper(kind, bus, clock, 1s);
        clock.advance(999ms);
        QCoreApplication::processEvents();
        QCOMPARE(bus.state(), Bus::State::awaited);
        QVERIFY(!bus.connection().isConnected());
        clock.advance(1ms);
        QTRY_COMPARE(bus.state(), Bus::State::open);
        QVERIFY(bus.connection().isConnected());
        QCOMPARE(clock.runningTimers(), 0);
    }

    void aBusThatIsNotThereIsAbsentForGood_data() { kinds(); }
    void aBusThatIsNotThereIsAbsentForGood()
    {
        QFETCH(BusKind, kind);
        const Kept kept(kind);
        QTRY_COMPARE(kept.bus.state(), Bus::State::absent);
        QCOMPARE(kept.clock.runningTimers(), 0);
    }

    void nobodyWaitsForASilentBus_data() { kinds(); }
    void nobodyWaitsForASilentBus()
    {
        QFETCH(BusKind, kind);
        FileDescriptor silent = privateBus().startSilent();
        QVERIFY(silent.isOpen());
        auto kept = std::make_unique<Kept>(kind);
        // The other thread has come as far as it can: somebody is at the door.
        const FileDescriptor caller(accept4(silent.get(), nullptr, nullptr, SOCK_CLOEXEC));
        QVERIFY(caller.isOpen());
        QCoreApplication::processEvents();
        QCOMPARE(kept->bus.state(), Bus::State::awaited);
        // Nor does it hold up what else Qt opens, or the end.
        QVERIFY(!QDBusConnection::connectToBus(QStringLiteral("unix:path=/nowhere"), QStringLiteral("other"))
                     .isConnected());
        QDBusConnection::disconnectFromBus(QStringLiteral("other"));
        kept.reset();
        silent.close();
        QFile::remove(QString::fromLocal8Bit(privateBus().address().mid(qsizetype(qstrlen("unix:path=")))));
    }

    void whoCannotDoWithoutLearnsInTimeWhetherThereIsABus()
    {
        FakeClock clock;
        Bus bus;
        BusKeeper keeper(BusKind::session, bus, clock, 1s);
        QVERIFY(privateBus().start());
        BusGate gate(keeper, clock);
        QList<bool> answers;
        gate.whenKnown([&](bool isThere) { answers.append(isThere); });
        QVERIFY(answers.isEmpty());
        QTRY_COMPARE(answers, QList<bool>{true});
        // Nothing is left that could tell it again.
        QCOMPARE(clock.runningTimers(), 0);
        QTRY_VERIFY(bus.isOpen());
        QCOMPARE(answers.size(), 1);
    }

    void whoAsksLateLearnsItFromTheEventLoop()
    {
        FakeClock clock;
        Bus bus;
        BusKeeper keeper(BusKind::session, bus, clock, 1s);
        QVERIFY(privateBus().start());
        BusGate gate(keeper, clock);
        QTRY_VERIFY(bus.isOpen());
        QList<bool> answers;
        gate.whenKnown([&](bool isThere) { answers.append(isThere); });
        QVERIFY(answers.isEmpty());
        QTRY_COMPARE(answers, QList<bool>{true});
    }

    void aBusThatIsNotThereIsNotWaitedFor()
    {
        FakeClock clock;
        Bus bus;
        BusKeeper keeper(BusKind::session, bus, clock, 1s);
        BusGate gate(keeper, clock);
        QList<bool> answers;
        gate.whenKnown([&](bool isThere) { answers.append(isThere); });
        QTRY_COMPARE(answers, QList<bool>{false});
        QTRY_COMPARE(bus.state(), Bus::State::absent);
    }

    void aSilentBusIsWaitedForASecond()
    {
        FileDescriptor silent = privateBus().startSilent();
        QVERIFY(silent.isOpen());
        FakeClock clock;
        Bus bus;
        BusKeeper keeper(BusKind::session, bus, clock, 1s);
        BusGate gate(keeper, clock);
        const FileDescriptor caller(accept4(silent.get(), nullptr, nullptr, SOCK_CLOEXEC));
        QVERIFY(caller.isOpen());
        QList<bool> answers;
        gate.whenKnown([&](bool isThere) { answers.append(isThere); });
        clock.advance(999ms);
        QCoreApplication::processEvents();
        QVERIFY(answers.isEmpty());
        clock.advance(1ms);
        QCOMPARE(answers, QList<bool>{false});
        silent.close();
        QFile::remove(QString::fromLocal8Bit(privateBus().address().mid(qsizetype(qstrlen("unix:path=")))));
    }

    void findsABusAgainThatEnded_data() { kinds(); }
    void findsABusAgainThatEnded()
    {
        QFETCH(BusKind, kind);
        QVERIFY(privateBus().start());
        Kept kept(kind);
        QTRY_VERIFY(kept.bus.isOpen());
        FollowedName followed(kept.bus, kept.clock, name);
        for (int times = 0; times < 2; ++times) {
            QVERIFY(QDBusConnection(kept.bus.connection()).registerService(name));
            QTRY_COMPARE(followed.owner(), kept.bus.connection().baseService());
            privateBus().end();
            QTRY_COMPARE(kept.bus.state(), Bus::State::absent);
            QCOMPARE(followed.owner(), QString());

            // It is looked for every two seconds.
            kept.clock.advance(2s);
            QTRY_COMPARE(kept.clock.runningTimers(), 1);
            QCOMPARE(kept.bus.state(), Bus::State::absent);
            QVERIFY(privateBus().start());
            kept.clock.advance(1999ms);
            QCOMPARE(kept.clock.runningTimers(), 1);
            kept.clock.advance(1ms);
            QTRY_VERIFY(kept.bus.isOpen());
        }
    }

    void theEndOfTheSessionBusIsNotTheEndOfTheProgram()
    {
        QVERIFY(privateBus().start());
        const Kept kept(BusKind::session);
        QTRY_VERIFY(kept.bus.isOpen());
        const GObjectPointer<GDBusConnection> shared(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
        QVERIFY(shared);
        QVERIFY(!g_dbus_connection_get_exit_on_close(shared.get()));
        privateBus().end();
        // Were it otherwise, this would be where a signal ends the test.
        QTRY_VERIFY(g_dbus_connection_is_closed(shared.get()));
        QTRY_COMPARE(kept.bus.state(), Bus::State::absent);
    }

private:
    static void kinds()
    {
        QTest::addColumn<BusKind>("kind");
        QTest::newRow("session") << BusKind::session;
        QTest::newRow("system") << BusKind::system;
    }
};

MOORLINE_TEST(BusKeeperTest);

#include "BusKeeperTest.moc"
