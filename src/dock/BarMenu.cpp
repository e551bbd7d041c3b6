#include "dock/BarMenu.h"

#include "settings/SettingsStore.h"
#include "theme/Symbols.h"

#include <QCoreApplication>
#include <QMenu>

namespace moorline {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarMenu", source);
}

void addCommand(QMenu &menu, const QString &title, const std::function<void()> &command)
{
    QAction *action = menu.addAction(title);
    action->setEnabled(bool(command));
    QObject::connect(action, &QAction::triggered, action, [command] { command(); });
}

void addMode(QMenu &menu, SettingsStore &store, const Symbols &symbols, DockVisibilityMode mode)
{
    QAction *action = menu.addAction(label(mode));
    if (store.settings().visibilityMode == mode) {
        action->setIcon(symbols.icon(QStringLiteral("checkmark"), menu.palette().color(QPalette::Text)));
        action->setIconVisibleInMenu(true);
    }
    QObject::connect(action, &QAction::triggered, &store, [&store, mode] {
        Settings settings = store.settings();
        settings.visibilityMode = mode;
        store.setSettings(settings);
    });
}

} // namespace

std::unique_ptr<QMenu> makeBarMenu(SettingsStore &store, const Symbols &symbols, const BarCommands &commands)
{
    auto menu = std::make_unique<QMenu>();
    addCommand(*menu, text(QT_TRANSLATE_NOOP("BarMenu", "Dock Settings…")), commands.openSettings);
    menu->addSeparator();
    addMode(*menu, store, symbols, DockVisibilityMode::alwaysVisible);
    addMode(*menu, store, symbols, DockVisibilityMode::hideWhenSystemDockAppears);
    menu->addSeparator();
    addCommand(*menu, text(QT_TRANSLATE_NOOP("BarMenu", "Quit Moorline")), commands.quit);
    return menu;
}

} // namespace moorline
