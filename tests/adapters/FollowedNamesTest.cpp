#include "platform/linux/bus/FollowedNames.h"

#include "PrivateBus.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

using Owners = QMap<QString, QString>;

const QString first = QStringLiteral("app.moorline.test.First");
const QString second = QStringLiteral("app.moorline.test.Second");

} // namespace

class FollowedNamesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_daemon = std::make_unique<PrivateBus>();
        QVERIFY(m_daemon->start());
        m_bus = std::make_unique<Bus>();
        m_bus->adopt(connection(0));
        QVERIFY(m_bus->isOpen());
    }

    void cleanup()
    {
        m_bus.reset();
        for (const QString &name : std::as_const(m_connections))
            QDBusConnection::disconnectFromBus(name);
        m_connections.clear();
        m_daemon.reset();
        TestCase::cleanup();
    }

    void namesThatAreThereAreFound()
    {
        QDBusConnection other = connection(1);
        QVERIFY(other.registerService(first));
        QVERIFY(other.registerService(QStringLiteral("app.moorline.testing")));
        const FollowedNames names(*m_bus, m_clock, QStringLiteral("app.moorline.test"));
        QTRY_COMPARE(names.owners(), (Owners{{first, other.baseService()}}));
        // Not even what was asked for is waited for any more.
        QTRY_COMPARE(m_clock.runningTimers(), 0);
    }

    void namesThatComeAndGoAreTold()
    {
        const FollowedNames names(*m_bus, m_clock, QStringLiteral("app.moorline.test"));
        const QSignalSpy changes(&names, &FollowedNames::ownersChanged);
        QDBusConnection other = connection(1);
        QVERIFY(other.registerService(first));
        QTRY_COMPARE(names.owners(), (Owners{{first, other.baseService()}}));
        QVERIFY(other.registerService(second));
        QTRY_COMPARE(names.owners().size(), 2);
        QVERIFY(other.unregisterService(first));
        QTRY_COMPARE(names.owners(), (Owners{{second, other.baseService()}}));
        QCOMPARE(changes.size(), 3);
    }

    void aNameThatChangesHandsIsTold()
    {
        QDBusConnection before = connection(1);
        QDBusConnection after = connection(2);
        QVERIFY(before.registerService(first));
        const FollowedNames names(*m_bus, m_clock, QStringLiteral("app.moorline.test"));
        QTRY_COMPARE(names.owners(), (Owners{{first, before.baseService()}}));
        QVERIFY(before.unregisterService(first));
        QVERIFY(after.registerService(first));
        QTRY_COMPARE(names.owners(), (Owners{{first, after.baseService()}}));
    }

    void otherNamesAreNotHeardOf()
    {
        const FollowedNames names(*m_bus, m_clock, QStringLiteral("app.moorline.test"));
        const QSignalSpy changes(&names, &FollowedNames::ownersChanged);
        QDBusConnection other = connection(1);
        QVERIFY(other.registerService(QStringLiteral("app.moorline.testing.First")));
        QVERIFY(other.registerService(QStringLiteral("app.moorline.test")));
        QVERIFY(other.registerService(first));
        QTRY_COMPARE(names.owners(), (Owners{{first, other.baseService()}}));
        QCOMPARE(changes.size(), 1);
    }

    void newsCountMoreThanAnOlderAnswer()
    {
        QDBusConnection other = connection(1);
        QVERIFY(other.registerService(first));
        QVERIFY(other.registerService(second));
        const FollowedNames names(*m_bus, m_clock, QStringLiteral("app.moorline.test"));
        // While it is still being asked about.
        QVERIFY(other.unregisterService(first));
        QTRY_COMPARE(names.owners(), (Owners{{second, other.baseService()}}));
        QTRY_COMPARE(m_clock.runningTimers(), 0);
        QCOMPARE(names.owners(), (Owners{{second, other.baseService()}}));
    }

    void theEndOfTheBusIsTheirEnd()
    {
        QDBusConnection other = connection(1);
        QVERIFY(other.registerService(first));
        const FollowedNames names(*m_bus, m_clock, QStringLiteral("app.moorline.test"));
        QTRY_COMPARE(names.owners().size(), 1);
        const QSignalSpy changes(&names, &FollowedNames::ownersChanged);
        m_bus->adopt(QDBusConnection(QStringLiteral("none")));
        QVERIFY(names.owners().isEmpty());
        QCOMPARE(changes.size(), 1);
        m_bus->adopt(connection(3));
        QTRY_COMPARE(names.owners(), (Owners{{first, other.baseService()}}));
    }

private:
    [[nodiscard]] QDBusConnection connection(int number)
    {
        static int generation = 0;
        const QString name = QStringLiteral("names%1-%2").arg(++generation).arg(number);
        m_connections.append(name);
        return QDBusConnection::connectToBus(QString::fromLocal8Bit(m_daemon->address()), name);
    }

    FakeClock m_clock;
    std::unique_ptr<PrivateBus> m_daemon;
    std::unique_ptr<Bus> m_bus;
    QStringList m_connections;
};

MOORLINE_TEST(FollowedNamesTest);

#include "FollowedNamesTest.moc"
