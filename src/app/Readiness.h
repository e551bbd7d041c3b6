#pragma once

namespace moorline {

struct Platform;

/// Waits until the application may begin, in an event loop of its own: that of the application asks at once whether a
/// screen reader runs. False when the application was told to quit before: then there is nothing to begin.
[[nodiscard]] bool waitUntilReady(const Platform &platform);

} // namespace moorline
