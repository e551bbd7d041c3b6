#pragma once

#include "platform/Menu.h"

#include <QStringList>

namespace moorline::test {

/// Each line of a menu; a separator is "-".
[[nodiscard]] inline QStringList titles(const Menu &menu)
{
    QStringList lines;
    for (const MenuItem &item : menu)
        lines.append(item.isSeparator() ? QStringLiteral("-") : item.title);
    return lines;
}

/// Chooses the line of that title. False when there is none that can be chosen.
inline bool choose(const Menu &menu, const QString &title)
{
    for (const MenuItem &item : menu) {
        if (item.title != title || !item.isEnabled())
            continue;
        item.action();
        return true;
    }
    return false;
}

} // namespace moorline::test
