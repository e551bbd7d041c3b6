// rejected: call to deleted constructor of 'Port<
#include "platform/Platform.h"

namespace moorline {

/// A system that has nothing but the time.
Platform clockAlone(Port<Clock> clock)
{
    return {.clock = std::move(clock)};
}

} // namespace moorline
