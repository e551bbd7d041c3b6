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
        : keeper(kind, bus, clock)
    {
        keeper.open();
    }

    FakeClock clock;
    Bus bus;
    BusKeeper keeper;
};

/// Who cannot do without the session's bus, and what it is told of it.
struct Waiting {
    void ask()
    {
        gate.whenKnown([this](bool isThere) { answers.append(isThere); });
    }

    FakeClock clock;
    Bus bus;
    BusKeeper keeper{BusKind::session, bus, clock};
    BusGate gate{keeper, clock};
    QList<bool> answers;
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
        BusKeeper keeper(kind, bus, clock);
        QCOMPARE(clock.runningTimers(), 0);
        keeper.openAfter(1s);
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
        QVERIFY(privateBus().start());
        Waiting waiting;
        waiting.ask();
        QVERIFY(waiting.answers.isEmpty());
        QTRY_COMPARE(waiting.answers, QList<bool>{true});
        // Nothing is left that could tell it again.
        QCOMPARE(waiting.clock.runningTimers(), 0);
        QTRY_VERIFY(waiting.bus.isOpen());
        QCOMPARE(waiting.answers.size(), 1);
    }

    void whoAsksLateLearnsItFromTheEventLoop()
    {
        QVERIFY(privateBus().start());
        Waiting waiting;
        QTRY_VERIFY(waiting.bus.isOpen());
        waiting.ask();
        QVERIFY(waiting.answers.isEmpty());
        QTRY_COMPARE(waiting.answers, QList<bool>{true});
    }

    void aBusThatIsNotThereIsNotWaitedFor()
    {
        Waiting waiting;
        waiting.ask();
        QTRY_COMPARE(waiting.answers, QList<bool>{false});
        QTRY_COMPARE(waiting.bus.state(), Bus::State::absent);
    }

    void aSilentBusIsWaitedForASecond()
    {
        FileDescriptor silent = privateBus().startSilent();
        QVERIFY(silent.isOpen());
        Waiting waiting;
        const FileDescriptor caller(accept4(silent.get(), nullptr, nullptr, SOCK_CLOEXEC));
        QVERIFY(caller.isOpen());
        waiting.ask();
        waiting.clock.advance(999ms);
        QCoreApplication::processEvents();
        QVERIFY(waiting.answers.isEmpty());
        waiting.clock.advance(1ms);
        QCOMPARE(waiting.answers, QList<bool>{false});
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
