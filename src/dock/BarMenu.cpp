#include "dock/BarMenu.h"

#include "dock/CommandTexts.h"
#include "settings/Choices.h"
#include "settings/SettingsStore.h"

namespace moorline {

namespace {

MenuItem modeItem(SettingsStore &store, DockVisibilityMode mode)
{
    const auto choose = [&store, mode] {
        store.change([mode](Settings &settings) { settings.visibilityMode = mode; });
    };
    return {.title = label(mode), .action = choose, .isChecked = store.settings().visibilityMode == mode};
}

} // namespace

Menu barMenu(SettingsStore &store, const BarCommands &commands)
{
    Menu menu{{.title = CommandTexts::dockSettings(), .action = commands.openSettings}, MenuItem::separator()};
    for (const DockVisibilityMode mode : allValues<DockVisibilityMode>())
        menu.append(modeItem(store, mode));
    menu.append(MenuItem::separator());
    menu.append({.title = CommandTexts::quit(), .action = commands.quit});
    return menu;
}

} // namespace moorline
