#pragma once

#include <xcb/xcb.h>

namespace moorline {

/// The connection that Qt draws through.
[[nodiscard]] xcb_connection_t *qtConnection();

/// Returns when the server has done all that Qt asked for, so that the other connection may build on it.
void waitForQt();

} // namespace moorline
