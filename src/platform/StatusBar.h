#pragma once

#include "platform/Menu.h"

#include <QColor>

namespace moorline {

/// An item of the status bar, as one wants it to be shown.
struct StatusBarItem {
    /// What the item is called in its tooltip and by a screen reader.
    QString name;
    /// The catalogue name of its picture.
    QString symbol;
    /// What the picture is drawn in where the bar does not give it a colour to suit its own.
    QColor color;
    /// The menu as it is at this moment. Asked for each time the menu opens, so that its check marks are right then;
    /// what it gave before stays valid.
    std::function<Menu()> menu;
};

/// The place for the program's status item: macOS's menu bar, a desktop's tray.
///
/// On macOS an item of square length whose button carries the system's own symbol as a template image, with the name as
/// its tooltip and accessibility description. Its menu is filled anew in menuNeedsUpdate:, one NSMenuItem for each of
/// ours: the title as it is, shortcut as key equivalent with its modifiers, state from `isChecked`, identifier, enabled
/// by isEnabled() and by nothing else (autoenablesItems off).
class StatusBar {
public:
    virtual ~StatusBar() = default;

    /// Shows the item from now on, now and whenever a status bar comes. To be called once; waits for nothing.
    virtual void show(StatusBarItem item) = 0;
};

} // namespace moorline
