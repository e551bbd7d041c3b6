#pragma once

#include "platform/linux/x11/ClientWindow.h"

#include <QObject>
#include <QSet>

namespace moorline {

class XConnection;

/// The windows of the desktop, read again only after something about them changed.
class ClientWindows final : public QObject {
    Q_OBJECT
public:
    explicit ClientWindows(XConnection &connection);

    /// Valid until the next call.
    [[nodiscard]] const ClientSnapshot &snapshot();

Q_SIGNALS:
    /// The last snapshot may no longer hold. Comes once, and not again before the next is taken.
    void changed();
    /// Which windows there are, which is the active one, or what is said of one may be another: all but places. Comes
    /// with each such change.
    void factsChanged();

private:
    void noteChange();
    void noteProperty(xcb_window_t window, xcb_atom_t name);
    void noteStructure(const xcb_generic_event_t &event);
    void noteShape(xcb_window_t window);
    [[nodiscard]] bool isRootProperty(xcb_atom_t name) const;
    [[nodiscard]] bool isWindowProperty(xcb_atom_t name) const;
    [[nodiscard]] bool isFact(xcb_atom_t name) const;

    XConnection &m_connection;
    ClientSnapshot m_snapshot;
    QSet<xcb_window_t> m_known;
    QSet<xcb_window_t> m_watched;
    bool m_isCurrent = false;
};

} // namespace moorline
