#include "platform/linux/network/DefaultRoutes.h"

#include "RouteLists.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace moorline::test::routeLists;

namespace {

const QByteArray neighbors = QByteArrayLiteral("eth0\t000200C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\t0\t0\t0     \n");

} // namespace

class DefaultRoutesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
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
};

MOORLINE_TEST(DefaultRoutesTest);

#include "DefaultRoutesTest.moc"
