#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>
#include <functional>

namespace moorline {

/// One line of a menu: a command, or a thin line between two groups of them.
struct MenuItem {
    /// Empty in a separator alone. To be shown as it is: an ampersand or an underscore means nothing but itself.
    QString title = {};
    /// What choosing it does. Without one the item is shown but cannot be chosen.
    std::function<void()> action = {};
    bool isChecked = false;
    /// The name of the symbol before the title, where there is one.
    QString symbol = {};
    /// Shown beside the title where the system does so. Qt's Ctrl is macOS's Command.
    QKeySequence shortcut = {};
    /// Whether it could carry a check mark, also while it does not.
    bool isCheckable = isChecked;
    /// What a program knows it by that looks at the menu from outside, in every language. May be empty.
    QString identifier = {};

    [[nodiscard]] static MenuItem separator() { return {}; }
    [[nodiscard]] bool isSeparator() const { return title.isEmpty(); }
    [[nodiscard]] bool isEnabled() const { return bool(action); }
};

/// What a menu holds, whatever shows it.
using Menu = QList<MenuItem>;

} // namespace moorline
