#pragma once

#include "dock/BarMenu.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace moorline {

/// The program's item in the system's status bar, with the commands that are always in reach.
class StatusItem final : public QObject {
    Q_OBJECT
public:
    StatusItem(SettingsStore &store, const Symbols &symbols, BarCommands commands, QObject *parent = nullptr);

    /// Puts the item into the status bar, now or as soon as there is one.
    void install();
    [[nodiscard]] const QMenu &menu() const { return m_menu; }

private:
    void buildMenu();
    void menuWillOpen();
    void toggleAlwaysVisible();

    SettingsStore &m_store;
    BarCommands m_commands;
    QMenu m_menu;
    QSystemTrayIcon m_item;
};

} // namespace moorline
