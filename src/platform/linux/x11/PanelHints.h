#pragma once

#include "platform/linux/x11/XAtoms.h"

namespace moorline {

class XConnection;

/// Writes what other programs are to know of the panel: a dock above others, on every desktop, in no list of windows,
/// that takes no keyboard focus. `connection` is the one that the window was made on, so that its own requests come
/// first.
void writePanelHints(xcb_connection_t *connection, const XConnection &atoms, xcb_window_t panel);

/// Writes what kind of window above the panel this is. `type` is one of the window types.
void writePopupHints(xcb_connection_t *connection, const XConnection &atoms, xcb_window_t popup, XAtom type);

} // namespace moorline
