#pragma once

#include "platform/BadgeSource.h"

#include <atomic>
#include <memory>

namespace moorline {

class AccessibilityElement;

/// The badges in what the system's dock tells to assistive programs, in the order of its icons. Takes as long as the
/// dock lets it wait; any thread. Ends early with what it has once it is not wanted any more.
[[nodiscard]] QList<BadgeTile> scanDockTiles(const AccessibilityElement &dock, const std::atomic_bool &isWanted);

} // namespace moorline
