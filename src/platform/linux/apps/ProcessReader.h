#pragma once

#include "freedesktop/WindowFacts.h"

namespace moorline {

/// What the system says of a process, as far as it is there and the user's own. It is read in parts of bounded size;
/// the kernel may take its time over a process that is stuck.
[[nodiscard]] ProcessFacts readProcess(qint64 process);

} // namespace moorline
