#pragma once

#include "PrivateBus.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/Bus.h"

#include <QDBusPendingCallWatcher>

namespace moorline::test {

/// A test with a session bus of its own, the program on the one side and a desktop's panel on the other.
class StatusNotifierTestCase : public TestCase {
    Q_OBJECT
protected:
    [[nodiscard]] QDBusConnection connect(const QString &name) const
    {
        return QDBusConnection::connectToBus(QString::fromLocal8Bit(privateBus.address()), name);
    }

    /// As after the bus came, or came again.
    void open()
    {
        close();
        QVERIFY(privateBus.start());
        ++m_generation;
        bus.adopt(connect(name("program")));
        panelBus.adopt(connect(name("panel")));
        QVERIFY(bus.isOpen());
        QVERIFY(panelBus.isOpen());
    }

    void close()
    {
        privateBus.end();
        QTRY_VERIFY(!bus.isOpen() && !panelBus.isOpen());
        QDBusConnection::disconnectFromBus(name("program"));
        QDBusConnection::disconnectFromBus(name("panel"));
    }

    /// What the program answers the panel.
    [[nodiscard]] QDBusMessage call(
        const QString &path, const QString &interface, const QString &method, const QVariantList &arguments = {})
    {
        auto message = QDBusMessage::createMethodCall(bus.connection().baseService(), path, interface, method);
        message.setArguments(arguments);
        QDBusPendingCallWatcher watcher(panelBus.connection().asyncCall(message));
        return QTest::qWaitFor([&] { return watcher.isFinished(); }) ? watcher.reply() : QDBusMessage();
    }

    [[nodiscard]] QString errorOf(
        const QString &path, const QString &interface, const QString &method, const QVariantList &arguments = {})
    {
        return call(path, interface, method, arguments).errorName();
    }

    /// A connection's, which no other had before.
    [[nodiscard]] QString name(const char *side) const
    {
        return QString::fromLatin1(side) + QString::number(m_generation);
    }

    PrivateBus privateBus;
    FakeClock clock;
    Bus bus;
    Bus panelBus;

private:
    int m_generation = 0;

protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        open();
    }
    void cleanup()
    {
        close();
        TestCase::cleanup();
    }
};

inline const QString invalidArguments = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");

} // namespace moorline::test
