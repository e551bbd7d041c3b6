#include "support/TrayChoice.h"

namespace moorline {

TrayChoice chooseTray(const TrayFacts &facts)
{
    if (facts.isShownOnBus || !facts.hasOlderKind)
        return {};
    if (facts.unshownFor < busTrayPatience)
        return {.isInOlderTray = false, .again = busTrayPatience - facts.unshownFor};
    return {.isInOlderTray = true, .again = std::nullopt};
}

} // namespace moorline
