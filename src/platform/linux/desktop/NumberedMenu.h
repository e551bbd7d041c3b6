#pragma once

#include "platform/Menu.h"

#include <QVariantMap>
#include <optional>

namespace moorline {

/// A menu with a number for each of its items, by which another program knows them. As long as the titles stay, an item
/// keeps its number; no number ever stands for two things.
class NumberedMenu final {
public:
    /// The number of the menu itself.
    static constexpr int root = 0;

    struct Entry {
        int id;
        MenuItem item;
    };

    enum class Change { none, properties, layout };

    /// What differs from the menu before.
    Change replace(const Menu &menu);

    [[nodiscard]] const QList<Entry> &entries() const { return m_entries; }
    /// Null for the root and for numbers that are not given, or not any more.
    [[nodiscard]] const Entry *find(int id) const;

private:
    QList<Entry> m_entries;
    int m_lastId = root;
};

/// An item in the words of com.canonical.dbusmenu. What it shares with the most ordinary of items is left out.
[[nodiscard]] QVariantMap menuProperties(const MenuItem &item);
/// What stands for a property that was left out. Absent where there is no such property.
[[nodiscard]] std::optional<QVariant> menuPropertyDefault(const QString &name);

} // namespace moorline
