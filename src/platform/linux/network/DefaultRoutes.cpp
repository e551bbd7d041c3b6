#include "platform/linux/network/DefaultRoutes.h"

#include <QList>
#include <algorithm>
#include <net/route.h>
#include <optional>

namespace moorline {

namespace {

using Fields = QList<QByteArray>;
using Rule = bool (*)(const Fields &);

std::optional<uint> hexadecimal(const QByteArray &field)
{
    bool isNumber = false;
    const uint value = field.toUInt(&isNumber, 16);
    return isNumber ? std::optional(value) : std::nullopt;
}

bool leadsOut(const QByteArray &interface, const QByteArray &flags)
{
    const uint value = hexadecimal(flags).value_or(0);
    return (value & RTF_UP) != 0 && (value & RTF_REJECT) == 0 && interface != "lo";
}

/// Interface, destination, gateway, flags, counters and metric, mask and more.
bool isDefault(const Fields &fields)
{
    return fields.size() >= 8 && hexadecimal(fields[1]) == 0U && hexadecimal(fields[7]) == 0U
        && leadsOut(fields[0], fields[3]);
}

/// Destination and its prefix length, source and its, next hop, metric, counters, flags, interface.
bool isDefaultIPv6(const Fields &fields)
{
    static const QByteArray anywhere(32, '0');
    return fields.size() == 10 && fields[0] == anywhere && hexadecimal(fields[1]) == 0U
        && leadsOut(fields[9], fields[8]);
}

bool isAnyLine(const QByteArray &text, Rule rule)
{
    const auto lines = text.split('\n');
    return std::any_of(
        lines.begin(), lines.end(), [rule](const QByteArray &line) { return rule(line.simplified().split(' ')); });
}

} // namespace

bool hasDefaultRoute(const QByteArray &routes)
{
    return isAnyLine(routes, isDefault);
}

bool hasDefaultIPv6Route(const QByteArray &routes)
{
    return isAnyLine(routes, isDefaultIPv6);
}

} // namespace moorline
