#pragma once

#include "platform/PopupWindows.h"

namespace moorline {

/// Carries a file by a dragging session, as PopupWindows::carryFile() has it. Comes back at once; the picture goes back
/// to where it came from where nobody takes the file.
void carryWithSession(QWidget &source, const QPointF &press, CarriedFile file, PopupWindows::Ended ended);

} // namespace moorline
