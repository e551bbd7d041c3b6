#pragma once

#include "platform/Menu.h"

namespace moorline {

class SettingsStore;

/// What the menus reach beyond the bar. A command without a function is shown but cannot be chosen.
struct BarCommands {
    std::function<void()> openSettings;
    std::function<void()> quit;
};

/// The bar's context menu, as it is at this moment.
[[nodiscard]] Menu barMenu(SettingsStore &store, const BarCommands &commands);

} // namespace moorline
