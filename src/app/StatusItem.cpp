#include "app/StatusItem.h"

#include "dock/CommandTexts.h"
#include "platform/StatusBar.h"
#include "settings/SettingsStore.h"
#include "theme/Symbols.h"

#include <QCursor>

namespace moorline {

namespace {

/// Nothing tells whether the status bar is dark or light: this stands out from both where the icon is no template.
const QColor iconColor(0xa6, 0xa6, 0xa6);
const QString alwaysVisibleIdentifier = QStringLiteral("alwaysVisible");

} // namespace

StatusItem::StatusItem(
    SettingsStore &store, const StatusBar &statusBar, const Symbols &symbols, BarCommands commands, QObject *parent)
    : QObject(parent)
    , m_store(store)
    , m_commands(std::move(commands))
    , m_icon(symbols.icon(QStringLiteral("dock.rectangle"), iconColor))
{
    buildMenu();
    connect(&statusBar, &StatusBar::becameAvailable, this, &StatusItem::install);
}

void StatusItem::install()
{
    m_item = std::make_unique<QSystemTrayIcon>(m_icon);
    m_item->setToolTip(QStringLiteral("Moorline"));
    m_item->setContextMenu(&m_menu);
    connect(m_item.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger && !m_menu.isVisible())
            m_menu.popup(QCursor::pos());
    });
    m_item->show();
}

void StatusItem::buildMenu()
{
    QAction *openSettings = m_menu.addAction(CommandTexts::dockSettings());
    openSettings->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    openSettings->setEnabled(bool(m_commands.openSettings));
    connect(openSettings, &QAction::triggered, this, [this] { m_commands.openSettings(); });
    m_menu.addSeparator();

    QAction *alwaysVisible = m_menu.addAction(tr("Always Visible"));
    alwaysVisible->setObjectName(alwaysVisibleIdentifier);
    alwaysVisible->setCheckable(true);
    connect(alwaysVisible, &QAction::triggered, this, &StatusItem::toggleAlwaysVisible);
    m_menu.addSeparator();

    QAction *quit = m_menu.addAction(CommandTexts::quit());
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    connect(quit, &QAction::triggered, this, [this] { m_commands.quit(); });
    connect(&m_menu, &QMenu::aboutToShow, this, &StatusItem::menuWillOpen);
}

void StatusItem::menuWillOpen()
{
    if (auto *alwaysVisible = m_menu.findChild<QAction *>(alwaysVisibleIdentifier))
        alwaysVisible->setChecked(m_store.settings().visibilityMode == DockVisibilityMode::alwaysVisible);
}

void StatusItem::toggleAlwaysVisible()
{
    m_store.change([](Settings &settings) {
        settings.visibilityMode = settings.visibilityMode == DockVisibilityMode::alwaysVisible
            ? DockVisibilityMode::hideWhenSystemDockAppears
            : DockVisibilityMode::alwaysVisible;
    });
}

} // namespace moorline
