#pragma once

#include <QList>
#include <QStringList>
#include <algorithm>

namespace moorline {

/// The items in the order of the ids. Those without one there come last, in the order they had.
template <typename Item>
[[nodiscard]] QList<Item> reordered(QList<Item> items, const QStringList &ids)
{
    QList<Item> answer;
    for (const QString &id : ids) {
        const auto found =
            std::find_if(items.begin(), items.end(), [&id](const Item &item) { return item.id() == id; });
        if (found == items.end())
            continue;
        answer.append(*found);
        items.erase(found);
    }
    return answer + items;
}

} // namespace moorline
