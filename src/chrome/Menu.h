#pragma once

#include <QList>
#include <QString>
#include <functional>

namespace moorline {

/// One line of a menu: a command, or a thin line between two groups of them.
struct MenuItem {
    /// Empty in a separator alone.
    QString title = {};
    /// What choosing it does. Without one the item is shown but cannot be chosen.
    std::function<void()> action = {};
    bool isChecked = false;
    /// The name of the symbol before the title, where there is one.
    QString symbol = {};

    [[nodiscard]] static MenuItem separator() { return {}; }
    [[nodiscard]] bool isSeparator() const { return title.isEmpty(); }
};

/// What a menu holds, whatever shows it.
using Menu = QList<MenuItem>;

} // namespace moorline
