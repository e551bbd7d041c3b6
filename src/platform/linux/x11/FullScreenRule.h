#pragma once

#include "platform/linux/x11/ClientWindow.h"

namespace moorline {

/// Whether the window is to be seen on the current virtual desktop.
[[nodiscard]] bool isOnScreen(const ClientWindow &window, const ClientSnapshot &snapshot);

/// Whether the screen at `screen`, in device pixels, belongs to a full-screen window: the active one or, while another
/// screen or this program itself is active, the topmost there. A dialog of a full-screen window counts as that window.
[[nodiscard]] bool isFullScreenSpace(const ClientSnapshot &snapshot, const QRect &screen, qint64 ownProcess);

} // namespace moorline
