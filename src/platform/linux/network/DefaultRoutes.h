#pragma once

#include <QByteArray>

namespace moorline {

/// Whether there is a way to everywhere among the routes, by the text of /proc/net/route. What cannot be read is no
/// route.
[[nodiscard]] bool hasDefaultRoute(const QByteArray &routes);

/// The same for IPv6, by the text of /proc/net/ipv6_route.
[[nodiscard]] bool hasDefaultIPv6Route(const QByteArray &routes);

} // namespace moorline
