#include "app/StatusItem.h"

#include "dock/CommandTexts.h"
#include "settings/SettingsStore.h"

#include <QCoreApplication>

namespace moorline {

namespace {

/// Nothing tells whether the status bar is dark or light: this stands out from both where the icon is no template.
const QColor iconColor(0xa6, 0xa6, 0xa6);

void toggleAlwaysVisible(SettingsStore &store)
{
    store.change([](Settings &settings) {
        settings.visibilityMode = settings.visibilityMode == DockVisibilityMode::alwaysVisible
            ? DockVisibilityMode::hideWhenSystemDockAppears
            : DockVisibilityMode::alwaysVisible;
    });
}

MenuItem alwaysVisible(SettingsStore &store)
{
    return {
        .title = QCoreApplication::translate("StatusItem", "Always Visible"),
        .action = [&store] { toggleAlwaysVisible(store); },
        .isChecked = store.settings().visibilityMode == DockVisibilityMode::alwaysVisible,
        .isCheckable = true,
        .identifier = QStringLiteral("alwaysVisible"),
    };
}

Menu statusMenu(SettingsStore &store, const BarCommands &commands)
{
    return {
        {.title = CommandTexts::dockSettings(),
            .action = commands.openSettings,
            .shortcut = QKeySequence(Qt::CTRL | Qt::Key_Comma)},
        MenuItem::separator(),
        alwaysVisible(store),
        MenuItem::separator(),
        {.title = CommandTexts::quit(), .action = commands.quit, .shortcut = QKeySequence(Qt::CTRL | Qt::Key_Q)},
    };
}

} // namespace

StatusBarItem statusItem(SettingsStore &store, const BarCommands &commands)
{
    return {
        .name = QStringLiteral("Moorline"),
        .symbol = QStringLiteral("dock.rectangle"),
        .color = iconColor,
        .menu = [&store, commands] { return statusMenu(store, commands); },
    };
}

} // namespace moorline
