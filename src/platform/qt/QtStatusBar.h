#pragma once

#include "platform/StatusBar.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace moorline {

class SymbolCatalogue;

/// The status bar as Qt knows it.
class QtStatusBar final : public StatusBar {
public:
    /// `symbols` outlives it.
    explicit QtStatusBar(const SymbolCatalogue &symbols);

    void show(StatusBarItem item) override;
    /// Anew, where another bar has come.
    void showAgain();

private:
    void fillMenu();

    const SymbolCatalogue &m_symbols;
    StatusBarItem m_item;
    QMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace moorline
