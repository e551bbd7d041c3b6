#include "PrivateBus.h"
#include "harness/TestCase.h"
#include "platform/Platform.h"

#include <poll.h>

using namespace moorline;
using namespace moorline::test;

namespace {

bool isAnybodyAtTheDoor(const FileDescriptor &door)
{
    pollfd look{door.get(), POLLIN, 0};
    return ::poll(&look, 1, 0) > 0;
}

} // namespace

class LinuxPlatformTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    /// Until then the environment is written, which the other thread would read.
    void nobodyAsksForTheSystemBusBeforeTheBarMayBegin()
    {
        const PrivateBus systemBus;
        const FileDescriptor door = systemBus.startSilent();
        QVERIFY(door.isOpen());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", systemBus.address());

        const Platform platform = createPlatform({});
        // Longer than the session bus is waited for.
        QTest::qWait(1500);
        QVERIFY(!isAnybodyAtTheDoor(door));

        bool hasBegun = false;
        platform.whenReady([&hasBegun] { hasBegun = true; });
        QTRY_VERIFY(hasBegun);
        QVERIFY(!isAnybodyAtTheDoor(door));
        QTRY_VERIFY(isAnybodyAtTheDoor(door));
    }
};

MOORLINE_TEST(LinuxPlatformTest);

#include "LinuxPlatformTest.moc"
