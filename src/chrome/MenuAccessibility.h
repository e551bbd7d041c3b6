#pragma once

namespace moorline {

/// Makes the menus and their rows known as such to whoever reads the screen aloud. Later calls do nothing.
void nameMenusForAccessibility();

} // namespace moorline
