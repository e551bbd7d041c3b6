#pragma once

#include "platform/linux/x11/ClientWindow.h"

#include <QSet>

namespace moorline {

class XConnection;

/// Reads the state of the whole desktop in a handful of round trips, however many windows there are.
class ClientWindowReader final {
public:
    /// Windows in `watched` are already watched; what is read for the first time is added to them.
    ClientWindowReader(const XConnection &connection, QSet<xcb_window_t> &watched);

    [[nodiscard]] ClientSnapshot read();

private:
    struct Children {
        QList<xcb_window_t> docks;
        QList<xcb_window_t> ordinary;
    };

    void readRoot(ClientSnapshot &snapshot);
    void forgetManaged(ClientSnapshot &snapshot);
    [[nodiscard]] bool confirmsWindowManager(xcb_window_t check) const;
    [[nodiscard]] Children classifyRootChildren() const;
    [[nodiscard]] QList<ClientWindow> readWindows(const QList<xcb_window_t> &windows, bool areManaged);
    void readReachableFrames(QList<ClientWindow> &windows) const;
    void findFrames(QList<ClientWindow> &windows) const;
    void sortByStacking(QList<ClientWindow> &windows) const;
    void watchOnce(xcb_window_t window);

    const XConnection &m_connection;
    QSet<xcb_window_t> &m_watched;
    QList<xcb_window_t> m_managed;
    QList<xcb_window_t> m_rootChildren;
};

} // namespace moorline
