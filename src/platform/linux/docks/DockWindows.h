#pragma once

#include <QList>
#include <QMargins>
#include <QRect>
#include <QString>
#include <optional>
#include <xcb/xcb.h>

namespace moorline {

class ClientWindows;

/// A panel or dock of another program. Lengths are in device pixels from the top left of the root window.
struct DockWindow {
    xcb_window_t window = XCB_WINDOW_NONE;
    /// The class part of WM_CLASS; empty when there is none.
    QString windowClass;
    std::optional<qint64> process;
    QRect frame;
    /// What it reserves, measured from the edges of the root window.
    QMargins strut;
    /// The part of the frame that takes the pointer. A dock that hides keeps a thin strip at most.
    QRect reachableFrame;
};

/// The dock-type windows of other programs that are mapped now.
class DockWindows final {
public:
    explicit DockWindows(ClientWindows &clients);

    /// Bottom to top. Costs no round trip while nothing happens on the desktop.
    [[nodiscard]] QList<DockWindow> windows() const;

private:
    ClientWindows &m_clients;
};

} // namespace moorline
