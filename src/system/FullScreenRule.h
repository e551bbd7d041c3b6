#pragma once

#include "platform/WindowServer.h"

namespace moorline {

/// Whether the screen belongs to a full-screen window: whether the window that holds the screen, or one that it is a
/// dialog of, is full-screen. The window that holds it is the active one or, while another screen or this program
/// itself is active, the topmost there; docks, desktops, menus and the like hold nothing. `screen` is in the
/// coordinates of the windows, which come front to back. Absent where no window has such a state.
[[nodiscard]] std::optional<bool> belongsToFullScreenWindow(
    const QList<WindowDescription> &windows, const QRectF &screen, qint64 ownProcess);

} // namespace moorline
