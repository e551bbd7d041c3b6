#pragma once

#include "platform/Menu.h"

#include <QMenu>

namespace moorline {

/// The menu of an item in a tray that cannot show one itself.
class TrayMenu final {
public:
    explicit TrayMenu(std::function<Menu()> menu);

    /// At the pointer, with what the menu holds now, unless it is open.
    void popUp();

private:
    void fill();

    std::function<Menu()> m_look;
    QMenu m_menu;
};

} // namespace moorline
