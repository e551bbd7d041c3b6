#include "platform/linux/network/RouteMonitor.h"

#include "RouteLists.h"
#include "fakes/FakeClock.h"
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
using namespace std::chrono_literals;

class RouteMonitorTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_clock = std::make_unique<FakeClock>();
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

    void tellsWhenThereIsAWayAfterThereWasNone()
    {
        watch();
        write(header + viaEthernet);
        change();
        m_clock->advance(1'999ms);
        QCOMPARE(m_reachable->size(), 0);
        m_clock->advance(1ms);
        QCOMPARE(m_reachable->size(), 1);
    }

    void tellsOfAWayThatIsIPv6Only()
    {
        watch();
        write({}, ipv6(anywhere, "00", "00450003"));
        changeAndSettle();
        QCOMPARE(m_reachable->size(), 1);
    }

    void saysNothingOfAWayThatWasThereFromTheStart()
    {
        write(header + viaEthernet);
        watch();
        changeAndSettle();
        QCOMPARE(m_reachable->size(), 0);
    }

    void saysNothingWhenOneMoreWayIsAdded()
    {
        write(header + viaEthernet);
        watch();
        write(header + viaEthernet, ipv6(anywhere, "00", "00450003"));
        changeAndSettle();
        QCOMPARE(m_reachable->size(), 0);
    }

    void tellsAgainAfterTheWayWasLost()
    {
        write(header + viaEthernet);
        watch();
        for (int times = 1; times <= 3; ++times) {
            write(header);
            changeAndSettle();
            write(header + viaEthernet);
            changeAndSettle();
            QCOMPARE(m_reachable->size(), times);
        }
    }

    void tellsOfAWayThatWasLostForAMoment()
    {
        write(header + viaEthernet);
        watch();
        write(header);
        change();
        m_clock->advance(1s);
        write(header + viaEthernet);
        send();
        m_clock->advance(10s);
        QCOMPARE(m_reachable->size(), 1);
    }

    void saysNothingOfAWayThatIsReplacedAtOnce()
    {
        write(header + viaEthernet);
        watch();
        for (int i = 0; i < 3; ++i)
            changeAndSettle();
        QCOMPARE(m_reachable->size(), 0);
    }

    void waitsUntilChangesHaveSettled()
    {
        watch();
        change();
        m_clock->advance(1'900ms);
        send();
        m_clock->advance(1'900ms);
        write(header + viaEthernet);
        QCOMPARE(m_reachable->size(), 0);
        m_clock->advance(200ms);
        QCOMPARE(m_reachable->size(), 1);
    }

    void looksAfterTenSecondsOfAStorm()
    {
        watch();
        write(header + viaEthernet);
        change();
        for (auto passed = 0s; passed < 9s; passed += 1s) {
            sendStorm();
            m_clock->advance(1s);
            QCOMPARE(m_reachable->size(), 0);
        }
        sendStorm();
        m_clock->advance(1s);
        QCOMPARE(m_reachable->size(), 1);
    }

    void sleepsThroughAStorm()
    {
        watch();
        change();
        sendStorm();
        QCoreApplication::processEvents();
        QCOMPARE(m_clock->runningTimers(), 1);
        // Nothing was taken from the socket meanwhile: it is as full as it was.
        QVERIFY(!send());
    }

    void listensAgainAfterAStorm()
    {
        watch();
        change();
        sendStorm();
        m_clock->advance(1min);
        QCoreApplication::processEvents();
        m_clock->advance(1min);
        write(header + viaEthernet);
        changeAndSettle();
        QCOMPARE(m_reachable->size(), 1);
    }

    void restsWhenNothingChanges()
    {
        watch();
        changeAndSettle();
        QCOMPARE(m_clock->runningTimers(), 0);
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
        write(header + viaEthernet);
        QTRY_COMPARE(m_clock->runningTimers(), 1);
        m_clock->advance(2s);
        QCOMPARE(m_reachable->size(), 1);
    }

    void staysSilentWithoutASocket()
    {
        watch(FileDescriptor());
        write(header + viaEthernet);
        QCoreApplication::processEvents();
        m_clock->advance(1min);
        QCOMPARE(m_reachable->size(), 0);
    }

    void ignoresFilesThatAreNotThere()
    {
        m_files = {.routes = QStringLiteral("/nowhere/route"), .ipv6Routes = QStringLiteral("/nowhere/ipv6_route")};
        watch();
        changeAndSettle();
        QCOMPARE(m_reachable->size(), 0);
    }

    void knowsWhetherThereIsAWayNow()
    {
        watch();
        QVERIFY(!m_monitor->isReachable());
        write(header + viaEthernet);
        QVERIFY(m_monitor->isReachable());
        write({}, ipv6(anywhere, "00", "00450003"));
        QVERIFY(m_monitor->isReachable());
        write(header);
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
    /// Begins to watch the files, with the test in the part of the kernel.
    void watch()
    {
        std::array<int, 2> ends{};
        QCOMPARE(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()), 0);
        m_kernel = FileDescriptor(ends[0]);
        watch(FileDescriptor(ends[1]));
    }

    void watch(FileDescriptor changes)
    {
        m_monitor = std::make_unique<RouteMonitor>(*m_clock, std::move(changes), m_files);
        m_reachable = std::make_unique<QSignalSpy>(m_monitor.get(), &Network::becameReachable);
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

    void sendStorm() const
    {
        while (send()) { }
    }

    /// One that is noticed.
    void change() const
    {
        QVERIFY(send());
        QTRY_COMPARE(m_clock->runningTimers(), 1);
    }

    void changeAndSettle() const
    {
        change();
        m_clock->advance(2s);
    }

    std::unique_ptr<FakeClock> m_clock;
    std::unique_ptr<QTemporaryDir> m_folder;
    RouteFiles m_files;
    FileDescriptor m_kernel;
    std::unique_ptr<RouteMonitor> m_monitor;
    std::unique_ptr<QSignalSpy> m_reachable;
};

MOORLINE_TEST(RouteMonitorTest);

#include "RouteMonitorTest.moc"
