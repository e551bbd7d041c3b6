#pragma once

#include "platform/PopupWindows.h"

namespace moorline {

/// Carries a file by Qt's own drag and drop. Comes back once the button was let go.
void carryWithQt(CarriedFile file);

} // namespace moorline
