#pragma once

#include <QByteArray>

/// Lists of routes, as the kernel gives them.
namespace moorline::test::routeLists {

inline const QByteArray header =
    QByteArrayLiteral("Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT       \n");
inline const QByteArray viaEthernet =
    QByteArrayLiteral("eth0\t00000000\t010200C0\t0003\t0\t0\t0\t00000000\t0\t0\t0     \n");

inline const QByteArray anywhere(32, '0');

/// A line of the IPv6 list.
[[nodiscard]] inline QByteArray ipv6(const QByteArray &destination, const QByteArray &length, const QByteArray &flags,
    const QByteArray &interface = "    eth0")
{
    return destination + ' ' + length + ' ' + anywhere
        + " 00 fd000000000000000000000000000001 00000400 00000002 00000000 " + flags + ' ' + interface + '\n';
}

} // namespace moorline::test::routeLists
