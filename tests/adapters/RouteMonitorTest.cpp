#include "platform/linux/network/RouteMonitor.h"

#include "RouteLists.h"
#include "harness/TestCase.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <arpa/inet.h>
#include <array>
#include <fcntl.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

using namespace moorline;
using namespace moorline::test;
using namespace moorline::test::routeLists;

class RouteMonitorTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_files = {.routes = m_folder->filePath(QStringLiteral("route")),
            .ipv6Routes = m_folder->filePath(QStringLiteral("ipv6_route"))};
    }

    void cleanup()
    {
        m_monitor.reset();
        m_kernel.close();
        TestCase::cleanup();
    }

    void looksForAWayWhenItIsAsked()
    {
        watch();
        QVERIFY(!m_monitor->isReachable());
        write(header + viaEthernet);
        QVERIFY(m_monitor->isReachable());
        write(header);
        QVERIFY(!m_monitor->isReachable());
        write({}, ipv6(anywhere, "00", "00450003"));
        QVERIFY(m_monitor->isReachable());
        QCOMPARE(m_changed->size(), 0);
    }

    void tellsOfAChangeOnceEachTimeItIsListenedTo()
    {
        watch();
        for (int times = 1; times <= 2; ++times) {
            m_monitor->listen();
            QVERIFY(send());
            QTRY_COMPARE(m_changed->size(), times);
            QVERIFY(!m_monitor->takeChanges());
            QVERIFY(send());
            QCoreApplication::processEvents();
            QCOMPARE(m_changed->size(), times);
            QVERIFY(m_monitor->takeChanges());
            QVERIFY(!m_monitor->takeChanges());
        }
    }

    void saysNothingBeforeItIsListenedTo()
    {
        watch();
        QVERIFY(send());
        QCoreApplication::processEvents();
        QCOMPARE(m_changed->size(), 0);
        m_monitor->listen();
        QTRY_COMPARE(m_changed->size(), 1);
    }

    void sleepsThroughAStorm()
    {
        watch();
        m_monitor->listen();
        QVERIFY(send());
        QTRY_COMPARE(m_changed->size(), 1);
        while (send()) { }
        QCoreApplication::processEvents();
        // Nothing was taken from the socket meanwhile: it is as full as it was.
        QVERIFY(!send());
        QCOMPARE(m_changed->size(), 1);
        QVERIFY(m_monitor->takeChanges());
    }

    void takesALossOfMessagesForAChange()
    {
        // A socket that reports a failure to whoever reads it, as one does that overflowed.
        FileDescriptor failing(socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        FileDescriptor closed(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
        sockaddr_in address{};
        socklen_t size = sizeof address;
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto *generic = reinterpret_cast<sockaddr *>(&address);
        QCOMPARE(bind(closed.get(), generic, size), 0);
        QCOMPARE(getsockname(closed.get(), generic, &size), 0);
        closed.close();
        QCOMPARE(::connect(failing.get(), generic, size), 0);
        QCOMPARE(::send(failing.get(), "x", 1, 0), 1);

        watch(std::move(failing));
        QVERIFY(m_monitor->takeChanges());
    }

    void staysSilentWithoutASocket()
    {
        watch(FileDescriptor());
        m_monitor->listen();
        QCoreApplication::processEvents();
        QVERIFY(!m_monitor->takeChanges());
        QCOMPARE(m_changed->size(), 0);
    }

    void ignoresFilesThatAreNotThere()
    {
        m_files = {.routes = QStringLiteral("/nowhere/route"), .ipv6Routes = QStringLiteral("/nowhere/ipv6_route")};
        watch();
        QVERIFY(!m_monitor->isReachable());
    }

    void whoWouldNotBeToldOfAWayTakesItThatThereIsOne()
    {
        watch(FileDescriptor());
        QVERIFY(m_monitor->isReachable());
    }

    void listensToTheKernelWithoutWaitingForIt()
    {
        const FileDescriptor descriptor = RouteMonitor::openRouteSocket();
        QVERIFY(descriptor.isOpen());
        QVERIFY((fcntl(descriptor.get(), F_GETFL) & O_NONBLOCK) != 0);
        QVERIFY((fcntl(descriptor.get(), F_GETFD) & FD_CLOEXEC) != 0);
        sockaddr_nl address{};
        socklen_t size = sizeof address;
        QCOMPARE(getsockname(descriptor.get(), reinterpret_cast<sockaddr *>(&address), &size), 0);
        QCOMPARE(address.nl_groups, std::uint32_t{RTMGRP_LINK | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE});
    }

private:
    /// Watches the files, with the test in the part of the kernel.
    void watch()
    {
        std::array<int, 2> ends{};
        QCOMPARE(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()), 0);
        m_kernel = FileDescriptor(ends[0]);
        watch(FileDescriptor(ends[1]));
    }

    void watch(FileDescriptor changes)
    {
        m_monitor = std::make_unique<RouteMonitor>(std::move(changes), m_files);
        m_changed = std::make_unique<QSignalSpy>(m_monitor.get(), &Network::changed);
    }

    void write(const QByteArray &routes, const QByteArray &ipv6Routes = {}) const
    {
        for (const auto &[path, text] :
            {std::pair(m_files.routes, routes), std::pair(m_files.ipv6Routes, ipv6Routes)}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        }
    }

    /// False when there is no more room.
    bool send() const { return ::send(m_kernel.get(), "change", 6, 0) == 6; }

    std::unique_ptr<QTemporaryDir> m_folder;
    RouteFiles m_files;
    FileDescriptor m_kernel;
    std::unique_ptr<RouteMonitor> m_monitor;
    std::unique_ptr<QSignalSpy> m_changed;
};

MOORLINE_TEST(RouteMonitorTest);

#include "RouteMonitorTest.moc"
