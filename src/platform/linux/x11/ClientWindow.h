#pragma once

#include "platform/WindowServer.h"

#include <QList>
#include <QMargins>
#include <QRect>
#include <QString>
#include <optional>
#include <xcb/xcb.h>

namespace moorline {

/// A window as its program and the window manager describe it. Lengths are in device pixels from the top left of the
/// root window.
struct ClientWindow {
    xcb_window_t window = XCB_WINDOW_NONE;
    /// The child of the root window that is or holds the window, usually the window manager's frame.
    xcb_window_t frameWindow = XCB_WINDOW_NONE;
    bool isManaged = false;
    bool isViewable = false;

    WindowKind kind = WindowKind::normal;
    bool isFullScreen = false;
    bool isHidden = false;
    bool isAbove = false;
    /// Absent for a window on all desktops.
    std::optional<std::uint32_t> desktop;
    xcb_window_t transientFor = XCB_WINDOW_NONE;

    bool skipsTaskbar = false;

    /// The two parts of WM_CLASS; empty when there is none.
    QString windowInstance;
    QString windowClass;
    /// Empty for all but programs of one toolkit.
    QString applicationId;
    /// As the window says.
    std::optional<qint64> process;
    /// As the server says. Absent for a window of another machine.
    std::optional<qint64> localProcess;

    /// With the window manager's frame, without a shadow that the program draws itself.
    QRect frame;
    /// The part of the frame that is neither shaped away nor lets the pointer through. Only known of docks.
    QRect reachableFrame;
    QMargins strut;
};

/// What was on the desktop at one moment.
struct ClientSnapshot {
    /// The window that proves that a window manager runs which keeps to the extended hints; none without one.
    xcb_window_t windowManagerProof = XCB_WINDOW_NONE;
    xcb_window_t activeWindow = XCB_WINDOW_NONE;
    std::optional<std::uint32_t> currentDesktop;
    /// Bottom to top. Beside what is managed, docks that bypass the window manager; without one, every ordinary window.
    QList<ClientWindow> windows;
    /// What is managed, in the order in which it was mapped.
    QList<xcb_window_t> mappingOrder;

    [[nodiscard]] bool hasWindowManager() const { return windowManagerProof != XCB_WINDOW_NONE; }
};

} // namespace moorline
