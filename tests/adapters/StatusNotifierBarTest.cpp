#include "platform/linux/desktop/StatusNotifierBar.h"

#include "harness/TestCase.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");

/// Another program on the session bus.
QDBusConnection desktop()
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("desktop"));
}

} // namespace

class StatusNotifierBarTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void cleanup()
    {
        desktop().unregisterService(watcher);
        TestCase::cleanup();
    }

    void noticesATrayThatComesLate()
    {
        const StatusNotifierBar bar;
        QSignalSpy available(&bar, &StatusNotifierBar::becameAvailable);
        QVERIFY(desktop().registerService(watcher));
        QTRY_COMPARE(available.size(), 1);
    }

    void noticesATrayThatComesAgain()
    {
        const StatusNotifierBar bar;
        QSignalSpy available(&bar, &StatusNotifierBar::becameAvailable);
        QVERIFY(desktop().registerService(watcher));
        QTRY_COMPARE(available.size(), 1);
        QVERIFY(desktop().unregisterService(watcher));
        QVERIFY(desktop().registerService(watcher));
        QTRY_COMPARE(available.size(), 2);
    }

    void noticesAHostThatFollowsItsWatcher()
    {
        QVERIFY(desktop().registerService(watcher));
        const StatusNotifierBar bar;
        QSignalSpy available(&bar, &StatusNotifierBar::becameAvailable);
        const auto registered = QDBusMessage::createSignal(
            QStringLiteral("/StatusNotifierWatcher"), watcher, QStringLiteral("StatusNotifierHostRegistered"));
        // The bus may take a moment to pass on the first match.
        QTRY_VERIFY((desktop().send(registered), available.size() >= 1));
    }
};

MOORLINE_TEST(StatusNotifierBarTest);

#include "StatusNotifierBarTest.moc"
