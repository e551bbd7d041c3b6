#include "platform/linux/bus/SystemBus.h"

#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/desktop/LogindPower.h"
#include "platform/linux/location/GeoClueLocationManager.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <sys/socket.h>
#include <sys/un.h>

#include "support/FileDescriptor.h"

using namespace moorline;
using namespace moorline::test;

namespace {

/// A socket on which everybody can connect and nobody answers.
FileDescriptor silentSocket(const QByteArray &path)
{
    FileDescriptor descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    if (bind(descriptor.get(), reinterpret_cast<sockaddr *>(&address), sizeof address) != 0
        || listen(descriptor.get(), 1) != 0)
        descriptor.close();
    return descriptor;
}

} // namespace

class SilentSystemBusTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    /// One case, because a process opens its system bus once.
    void nobodyWaitsForIt()
    {
        const QTemporaryDir folder;
        const QByteArray path = folder.filePath(QStringLiteral("bus")).toLocal8Bit();
        FileDescriptor bus = silentSocket(path);
        QVERIFY(bus.isOpen());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path);

        FakeClock clock;
        auto systemBus = std::make_unique<SystemBus>(clock);
        QSignalSpy opened(systemBus.get(), &SystemBus::opened);
        const LogindPower sleep(*systemBus);
        GeoClueLocationManager manager(clock, QStringLiteral("app.moorline.Moorline"), *systemBus);
        manager.requestWhenInUseAuthorization();
        clock.advance(SystemBus::openingDelay);

        // The thread has come as far as it can: somebody is at the door.
        const FileDescriptor caller(accept4(bus.get(), nullptr, nullptr, SOCK_CLOEXEC));
        QVERIFY(caller.isOpen());
        QCoreApplication::processEvents();
        QCOMPARE(opened.size(), 0);
        QCOMPARE(manager.authorizationStatus(), LocationAuthorization::notDetermined);
        // Nor does it hold up the end.
        systemBus.reset();
        bus.close();
    }
};

MOORLINE_TEST(SilentSystemBusTest);

#include "SilentSystemBusTest.moc"
