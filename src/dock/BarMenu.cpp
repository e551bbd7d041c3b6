#include "dock/BarMenu.h"

#include "dock/CommandTexts.h"
#include "settings/Choices.h"
#include "settings/SettingsStore.h"
#include "theme/Color.h"
#include "theme/Symbols.h"

#include <QMenu>

namespace moorline {

namespace {

/// The menu belongs to the bar and is as dark as it is, whatever the other windows of the desktop look like.
QPalette menuPalette(const QColor &accent)
{
    const QColor background(0x1c, 0x1c, 0x1f);
    QPalette palette(QColor(0x3c, 0x3c, 0x40));
    palette.setColor(QPalette::Base, background);
    // Some styles emboss what is disabled in this colour.
    palette.setColor(QPalette::Light, background);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::HighlightedText}) {
        palette.setColor(role, QColor(0xf2, 0xf2, 0xf2));
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x84));
    }
    palette.setColor(QPalette::Highlight, accent.darker(160));
    return palette;
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
    QObject::connect(action, &QAction::triggered, &store,
        [&store, mode] { store.change([mode](Settings &settings) { settings.visibilityMode = mode; }); });
}

} // namespace

std::unique_ptr<QMenu> makeBarMenu(SettingsStore &store, const Symbols &symbols, const BarCommands &commands)
{
    auto menu = std::make_unique<QMenu>();
    menu->setPalette(menuPalette(colorFromHex(store.settings().highlightColorHex)));
    addCommand(*menu, CommandTexts::dockSettings(), commands.openSettings);
    menu->addSeparator();
    for (const DockVisibilityMode mode : allValues<DockVisibilityMode>())
        addMode(*menu, store, symbols, mode);
    menu->addSeparator();
    addCommand(*menu, CommandTexts::quit(), commands.quit);
    return menu;
}

} // namespace moorline
