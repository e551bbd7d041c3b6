#include "platform/linux/RouteMonitor.h"

#include "fakes/FakeClock.h"
#include "platform/linux/DefaultRoutes.h"
#include "support/TestCase.h"

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
using namespace std::chrono_literals;

namespace {

const QByteArray header =
    QByteArrayLiteral("Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT       \n");
const QByteArray viaEthernet = QByteArrayLiteral("eth0\t00000000\t010200C0\t0003\t0\t0\t0\t00000000\t0\t0\t0     \n");
const QByteArray neighbors = QByteArrayLiteral("eth0\t000200C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\t0\t0\t0     \n");

/// A line of the IPv6 list.
QByteArray ipv6(const QByteArray &destination, const QByteArray &length, const QByteArray &flags,
    const QByteArray &interface = "    eth0")
{
    const QByteArray anywhere(32, '0');
    return destination + ' ' + length + ' ' + anywhere
        + " 00 fd000000000000000000000000000001 00000400 00000002 00000000 " + flags + ' ' + interface + '\n';
}

const QByteArray anywhere(32, '0');

} // namespace

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

    void findsTheDefaultRoute_data()
    {
        QTest::addColumn<QByteArray>("routes");
        QTest::addColumn<bool>("isThere");
        QTest::newRow("nothing") << QByteArray() << false;
        QTest::newRow("no route") << header << false;
        QTest::newRow("one") << header + viaEthernet + neighbors << true;
        QTest::newRow("last") << header + neighbors + viaEthernet << true;
        QTest::newRow("neighbors only") << header + neighbors << false;
        QTest::newRow("not up") << header + "eth0 00000000 010200C0 0002 0 0 0 00000000 0 0 0\n" << false;
        QTest::newRow("rejecting") << header + "* 00000000 00000000 0201 0 0 0 00000000 0 0 0\n" << false;
        QTest::newRow("to itself") << header + "lo 00000000 00000000 0001 0 0 0 00000000 0 0 0\n" << false;
        QTest::newRow("without a gateway") << header + "ppp0 00000000 00000000 0001 0 0 0 00000000 0 0 0\n" << true;
        QTest::newRow("half of everywhere") << header + "tun0 00000000 00000000 0001 0 0 0 00000080 0 0 0\n" << false;
        QTest::newRow("cut off") << header + "eth0 00000000 010200C0 0003 0 0 0" << false;
        QTest::newRow("no numbers") << header + "eth0 default gateway up 0 0 0 none 0 0 0\n" << false;
        QTest::newRow("too large numbers") << header + "eth0 00000000 0 fffffffff 0 0 0 00000000 0 0 0\n" << false;
        QTest::newRow("a long line") << QByteArray(100'000, 'x') + '\n' + viaEthernet << true;
        QTest::newRow("many fields") << QByteArray(100'000, '0').replace("0", "0 ") << false;
        QTest::newRow("zeros") << QByteArray(1000, '\0') << false;
        QTest::newRow("no text") << QByteArray("\xff\xfe\n\x80 00000000 \xff 0003\n") << false;
    }

    void findsTheDefaultRoute()
    {
        QFETCH(QByteArray, routes);
        QTEST(hasDefaultRoute(routes), "isThere");
    }

    void findsTheDefaultIPv6Route_data()
    {
        QTest::addColumn<QByteArray>("routes");
        QTest::addColumn<bool>("isThere");
        const QByteArray rejecting = ipv6(anywhere, "00", "00200200", "      lo");
        QTest::newRow("nothing") << QByteArray() << false;
        QTest::newRow("the one that every kernel has") << rejecting << false;
        QTest::newRow("one") << rejecting + ipv6(anywhere, "00", "00000003") << true;
        QTest::newRow("announced by a router") << ipv6(anywhere, "00", "00450003") << true;
        QTest::newRow("not up") << ipv6(anywhere, "00", "00000002") << false;
        QTest::newRow("rejecting") << ipv6(anywhere, "00", "00000201") << false;
        QTest::newRow("to itself") << ipv6(anywhere, "00", "00000001", "lo") << false;
        QTest::newRow("neighbors") << ipv6("fe800000000000000000000000000000", "40", "00000001") << false;
        QTest::newRow("one address") << ipv6(anywhere, "80", "00000001") << false;
        QTest::newRow("cut off") << ipv6(anywhere, "00", "00000003").left(100) << false;
        QTest::newRow("a short destination") << ipv6("0", "00", "00000003") << false;
        QTest::newRow("no numbers") << ipv6(anywhere, "zz", "00000003") << false;
        QTest::newRow("of the other kind") << header + viaEthernet << false;
    }

    void findsTheDefaultIPv6Route()
    {
        QFETCH(QByteArray, routes);
        QTEST(hasDefaultIPv6Route(routes), "isThere");
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
