#pragma once

namespace moorline {

/// Has the library that finds fonts read its configuration on another thread, which the first text would wait for
/// otherwise: a tenth of the time until the bar is there. To be called as early as possible; a second time does
/// nothing.
void readFontsAhead();

} // namespace moorline
