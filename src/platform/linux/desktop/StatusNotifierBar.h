#pragma once

#include "platform/linux/bus/BusSignal.h"
#include "platform/linux/bus/FollowedName.h"
#include "platform/linux/desktop/StatusNotifierItem.h"
#include "platform/linux/desktop/StatusNotifierMenu.h"

namespace moorline {

/// The tray of the session bus: programs tell org.kde.StatusNotifierWatcher of their items, and a host shows them.
/// Either may come late, go and come again, and so may the bus.
class StatusNotifierBar final : public QObject {
    Q_OBJECT
public:
    /// All of them outlive it.
    StatusNotifierBar(Bus &bus, Clock &clock, const SymbolCatalogue &symbols);

    /// Tells the watcher of the item, now and whenever there is one. To be called once.
    void show(const StatusBarItem &item);
    /// Whether there is somebody who shows the item, as far as the watcher knows.
    [[nodiscard]] bool isShown() const { return m_isRegistered && m_hasHost; }

Q_SIGNALS:
    void shownChanged();
    /// The host cannot show a menu.
    void menuRequested();

private:
    QCoro::Task<> tellWatcher();
    QCoro::Task<> askForHost();
    void hostCame();
    void setState(bool isRegistered, bool hasHost);

    Bus &m_bus;
    Clock &m_clock;
    const SymbolCatalogue &m_symbols;
    FollowedName m_watcher;
    BusSignal m_hostCame;
    BusSignal m_hostWent;
    bool m_isRegistered = false;
    bool m_hasHost = false;
    // These grow with each piece of news: an answer to a question from before it is none.
    int m_watcherNews = 0;
    int m_hostNews = 0;
    std::unique_ptr<StatusNotifierMenu> m_menu;
    std::unique_ptr<StatusNotifierItem> m_item;
};

} // namespace moorline
