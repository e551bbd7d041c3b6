#pragma once

#include "MprisDouble.h"
#include "PrivateBus.h"
#include "fakes/FakeApplications.h"
#include "fakes/FakeClock.h"
#include "harness/Answer.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/players/MprisPlayers.h"

#include <QDBusPendingCallWatcher>
#include <QSignalSpy>

namespace moorline::test {

/// The base of tests with players on a bus of their own, under virtual time.
class MprisTestCase : public TestCase {
    Q_OBJECT
protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_daemon = std::make_unique<PrivateBus>();
        QVERIFY(m_daemon->start());
        m_clock = std::make_unique<FakeClock>();
        m_workspace = std::make_unique<FakeWorkspace>();
        m_bus = std::make_unique<Bus>();
        openBus();
    }

    void cleanup()
    {
        m_players.reset();
        m_doubles.clear();
        m_bus.reset();
        m_workspace.reset();
        m_clock.reset();
        leaveBus();
        m_daemon.reset();
        TestCase::cleanup();
    }

protected:
    using Query = Answer<std::optional<PlayerReport>>;

    static inline const QString getAll = QStringLiteral("GetAll Player");
    static inline const QString getRoot = QStringLiteral("GetAll root");
    static inline const QString getPosition = QStringLiteral("Get Position");
    static inline const QString metadata = QStringLiteral("Metadata");
    static inline const QString title = QStringLiteral("xesam:title");

    void openBus()
    {
        static int generation = 0;
        m_connectionName = QStringLiteral("bar%1").arg(++generation);
        m_bus->adopt(QDBusConnection::connectToBus(QString::fromLocal8Bit(m_daemon->address()), m_connectionName));
        QVERIFY(m_bus->isOpen());
    }
    void leaveBus() { QDBusConnection::disconnectFromBus(std::exchange(m_connectionName, {})); }

    /// What is tested begins.
    void begin()
    {
        m_players = std::make_unique<MprisPlayers>(
            MprisPlayers::Context{.sessionBus = *m_bus, .clock = *m_clock, .workspace = *m_workspace});
        m_changes = std::make_unique<QSignalSpy>(m_players.get(), &MediaPlayers::changed);
        settle();
    }

    /// Another player comes.
    MprisDouble &add(const QString &name)
    {
        m_doubles.push_back(std::make_unique<MprisDouble>(m_daemon->address(), name));
        return *m_doubles.back();
    }
    /// One that is known to what is tested.
    MprisDouble &addKnown(const QString &name)
    {
        MprisDouble &player = add(name);
        settle();
        return player;
    }

    /// Waits until every message has been dealt with on all sides, and those that they gave rise to.
    void settle()
    {
        // The bus keeps the order between two parties. What a player is called for comes back through it.
        for (int round = 0; round < 6; ++round) {
            QVERIFY(isAnswered(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
            for (const auto &player : m_doubles) {
                if (const QString owner = player->owner(); !owner.isEmpty())
                    QVERIFY(isAnswered(owner, MprisDouble::flush));
            }
        }
    }

    /// What was told has been gathered and asked for.
    void gather()
    {
        settle();
        m_clock->advance(std::chrono::milliseconds(50));
        settle();
    }

    /// The answer to a question that is answered without time passing.
    [[nodiscard]] std::optional<PlayerReport> report(MusicSource source = MusicSource::music)
    {
        const Query query(m_players->query(source));
        if (!QTest::qWaitFor([&query] { return query.isThere(); }, 30'000))
            qFatal("a query is not answered");
        settle();
        return query.value();
    }
    [[nodiscard]] QString shown(MusicSource source = MusicSource::music)
    {
        const auto told = report(source);
        return told ? told->title : QStringLiteral("nothing");
    }

    std::unique_ptr<PrivateBus> m_daemon;
    std::unique_ptr<FakeClock> m_clock;
    std::unique_ptr<FakeWorkspace> m_workspace;
    std::unique_ptr<Bus> m_bus;
    std::vector<std::unique_ptr<MprisDouble>> m_doubles;
    std::unique_ptr<MprisPlayers> m_players;
    std::unique_ptr<QSignalSpy> m_changes;

private:
    [[nodiscard]] bool isAnswered(const QString &service, const QString &method) const
    {
        const auto question =
            QDBusMessage::createMethodCall(service, QStringLiteral("/org/mpris/MediaPlayer2"), {}, method);
        const QDBusPendingCallWatcher watcher(m_bus->connection().asyncCall(question));
        QSignalSpy answered(&watcher, &QDBusPendingCallWatcher::finished);
        return answered.wait(30'000);
    }

    QString m_connectionName;
};

} // namespace moorline::test
