#pragma once

#include "platform/StatusBar.h"
#include "platform/linux/desktop/StatusNotifierBar.h"
#include "platform/linux/desktop/SvgSymbols.h"

namespace moorline {

class TrayMenu;
class X11TrayIcon;
class XConnection;

/// The desktop's tray: the one of the session bus, and where nobody there shows the item, the older one of the X
/// server.
class LinuxStatusBar final : public QObject, public StatusBar {
    Q_OBJECT
public:
    /// `connection` may be null. All of them outlive it.
    LinuxStatusBar(Bus &sessionBus, Clock &clock, XConnection *connection);
    ~LinuxStatusBar() override;

    void show(StatusBarItem item) override;

private:
    void look();
    void enterOlderTray();
    void leaveOlderTray();
    void openMenu();
    void showToolTipSoon();
    void hideToolTip();

    Bus &m_bus;
    Clock &m_clock;
    XConnection *m_connection;
    SvgSymbols m_symbols;
    StatusBarItem m_item;
    std::unique_ptr<TrayMenu> m_menu;
    std::unique_ptr<StatusNotifierBar> m_notifier;
    std::unique_ptr<X11TrayIcon> m_olderIcon;
    /// In the clock's uptime; absent while somebody on the bus shows the item.
    std::optional<std::chrono::milliseconds> m_unshownSince;
    /// Chooses again.
    std::unique_ptr<Clock::Timer> m_patience;
    std::unique_ptr<Clock::Timer> m_toolTip;
};

} // namespace moorline
