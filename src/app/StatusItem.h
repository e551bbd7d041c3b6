#pragma once

#include "dock/BarMenu.h"
#include "platform/StatusBar.h"

namespace moorline {

/// The program's item in the system's status bar, with the commands that are always in reach. `store` outlives it.
[[nodiscard]] StatusBarItem statusItem(SettingsStore &store, const BarCommands &commands);

} // namespace moorline
