#pragma once

#include "freedesktop/WindowFacts.h"

#include <QList>

namespace moorline {

class WindowRequests;
struct ClientSnapshot;

/// Raises windows over all ordinary ones, one after the other, without giving them the focus, as far as the window
/// manager can. Waits for the server.
void raiseWithoutFocus(const QList<XWindowId> &windows, const ClientSnapshot &snapshot, const WindowRequests &requests);

} // namespace moorline
