#pragma once

#include "platform/Screens.h"
#include "platform/WindowServer.h"

namespace moorline {

/// The primary screen in the coordinates of the windows; absent while there is none.
[[nodiscard]] std::optional<QRectF> primaryScreenBounds(const QList<Screen> &screens);

/// Whether the window is another program's dock, and more of it than the strip it is called back by shows along that
/// edge of the screen, which is in the coordinates of the windows.
[[nodiscard]] bool showsDockAlongBottom(const WindowDescription &window, const QRectF &screen);
[[nodiscard]] bool showsDockAlongTop(const WindowDescription &window, const QRectF &screen);

} // namespace moorline
