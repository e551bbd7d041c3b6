#pragma once

#include <QImage>
#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// How the windows of a tray look, which those that it takes in have to share: System Tray Protocol Specification 0.3,
/// "Visual", and the server's own look where the tray names none.
/// specifications.freedesktop.org/systemtray-spec
struct X11TrayVisual {
    xcb_visualid_t visual = 0;
    std::uint8_t depth = 0;

    /// `tray` may be gone already.
    [[nodiscard]] static X11TrayVisual of(const XConnection &connection, xcb_window_t tray);
    /// Whether its pixels can be transparent.
    [[nodiscard]] bool hasAlpha() const { return depth == 32; }
};

/// Draws a picture into the middle of a window whose background is transparent, or the tray's own. Nothing is drawn
/// where the window cannot be seen at the moment, or on a screen of so few colours that nobody has it any more.
void paintInTray(
    const XConnection &connection, xcb_window_t window, std::uint8_t depth, QSize size, const QImage &picture);

} // namespace moorline
