#include "platform/linux/apps/LaunchScopes.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/apps/EntryLaunch.h"
#include "platform/linux/bus/Bus.h"
#include "platform/qt/Background.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <sys/wait.h>

namespace moorline::test {

using namespace std::chrono_literals;

namespace {

/// Longer than the test waits for anything.
constexpr std::chrono::milliseconds forEver = 20s;

const QString managerName = QStringLiteral("org.freedesktop.systemd1");

/// Keeps what it is asked, and does it when it is told to.
class ServiceManager final : public QDBusVirtualObject {
public:
    ServiceManager()
        : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, managerName))
    {
        m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        m_connection.registerService(managerName);
    }
    ~ServiceManager() override
    {
        m_connection.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
        QDBusConnection::disconnectFromBus(managerName);
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        scopes.append(message.arguments().at(0).toString());
        const auto job = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/org/freedesktop/systemd1/job/1")));
        return connection.send(
            refuses ? message.createErrorReply(QDBusError::AccessDenied, {}) : message.createReply(job));
    }
    [[nodiscard]] QString introspect([[maybe_unused]] const QString &path) const override { return {}; }

    void endJob(const QString &scope) const
    {
        auto end = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/systemd1"),
            QStringLiteral("org.freedesktop.systemd1.Manager"), QStringLiteral("JobRemoved"));
        end << 1U << QVariant::fromValue(QDBusObjectPath(QStringLiteral("/org/freedesktop/systemd1/job/1"))) << scope
            << QStringLiteral("done");
        m_connection.send(end);
    }

    bool refuses = false;
    QStringList scopes;

private:
    QDBusConnection m_connection;
};

} // namespace

/// Programs that wait until they are kept as applications of their own.
class LaunchScopesTest final : public TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_mark = m_folder->filePath(QStringLiteral("ran"));
        m_bus = std::make_unique<Bus>();
        m_bus->adopt(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("scopes")));
        QVERIFY(m_bus->isOpen());
        m_outcome.reset();
    }

    void cleanup()
    {
        QTRY_VERIFY(m_outcome);
        for (const qint64 process : std::as_const(m_outcome->processes))
            ::waitpid(pid_t(process), nullptr, 0);
        m_background.reset();
        m_scopes.reset();
        m_bus.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("scopes"));
        TestCase::cleanup();
    }

    void aProgramRunsWhenItsScopeIsThere()
    {
        ServiceManager manager;
        launch(forEver);
        QTRY_COMPARE(manager.scopes.size(), 1);
        manager.endJob(QStringLiteral("another.scope"));
        QTest::qWait(100);
        QVERIFY(!hasRun());
        QVERIFY(!m_outcome);
        manager.endJob(manager.scopes.first());
        QTRY_VERIFY(hasRun());
    }

    void aManagerThatRefusesKeepsNobodyWaiting()
    {
        ServiceManager manager;
        manager.refuses = true;
        launch(forEver);
        QTRY_VERIFY(hasRun());
        QCOMPARE(manager.scopes.size(), 1);
    }

    void withoutAManagerNobodyWaits()
    {
        launch(forEver);
        QTRY_VERIFY(hasRun());
    }

    void aManagerThatIsSlowIsNotWaitedForForEver()
    {
        ServiceManager manager;
        QElapsedTimer timer;
        timer.start();
        launch(200ms);
        QTRY_VERIFY(hasRun());
        QVERIFY(timer.elapsed() >= 200);
        QCOMPARE(manager.scopes.size(), 1);
        QCOMPARE(LaunchScopes::patience, 500ms);
    }

    void withoutABusNothingIsHeld()
    {
        Bus none;
        LaunchScopes scopes(none, m_clock);
        QVERIFY(!scopes.hold(QStringLiteral("pad"), QStringLiteral("Pad")));
        m_outcome.emplace();
    }

private:
    void launch(std::chrono::milliseconds limit)
    {
        m_scopes = std::make_unique<LaunchScopes>(*m_bus, m_clock, limit);
        m_background = std::make_unique<Background>();
        const LaunchManner manner{.environment = {"PATH=/usr/bin:/bin"},
            .home = "/",
            .hold = m_scopes->hold(QStringLiteral("pad"), QStringLiteral("Pad"))};
        QVERIFY(manner.hold);
        m_background->run<LaunchOutcome>(
            [manner, mark = m_mark] { return launchProgram(QStringLiteral("touch"), {mark}, manner); },
            [this, hold = manner.hold](const LaunchOutcome &outcome) {
                m_scopes->release(hold);
                m_outcome = outcome;
            });
    }
    [[nodiscard]] bool hasRun() const { return QFile::exists(m_mark); }

    FakeClock m_clock;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_mark;
    std::unique_ptr<Bus> m_bus;
    std::unique_ptr<LaunchScopes> m_scopes;
    std::unique_ptr<Background> m_background;
    std::optional<LaunchOutcome> m_outcome;
};

MOORLINE_TEST(LaunchScopesTest);

} // namespace moorline::test

#include "LaunchScopesTest.moc"
