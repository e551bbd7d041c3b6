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
    /// How long nobody on the bus has to show the item before it goes into the older tray. A panel that starts may
    /// bring both, one after the other.
    static constexpr std::chrono::seconds patience{1};

    /// `connection` may be null. All of them outlive it.
    LinuxStatusBar(Bus &sessionBus, Clock &clock, XConnection *connection);
    ~LinuxStatusBar() override;

    void show(StatusBarItem item) override;

private:
    void chooseTray();
    void enterOlderTray();
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
    std::unique_ptr<Clock::Timer> m_patience;
    std::unique_ptr<Clock::Timer> m_toolTip;
};

} // namespace moorline
