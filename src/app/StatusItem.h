#pragma once

#include "dock/BarMenu.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace moorline {

class StatusBar;
class Symbols;

/// The program's item in the system's status bar, with the commands that are always in reach.
class StatusItem final : public QObject {
    Q_OBJECT
public:
    StatusItem(SettingsStore &store, const StatusBar &statusBar, const Symbols &symbols, BarCommands commands,
        QObject *parent = nullptr);

    /// Puts the item into the status bar, now and whenever another one comes.
    void install();
    [[nodiscard]] const QMenu &menu() const { return m_menu; }

private:
    void buildMenu();
    void menuWillOpen();
    void toggleAlwaysVisible();

    SettingsStore &m_store;
    BarCommands m_commands;
    QMenu m_menu;
    QIcon m_icon;
    std::unique_ptr<QSystemTrayIcon> m_item;
};

} // namespace moorline
