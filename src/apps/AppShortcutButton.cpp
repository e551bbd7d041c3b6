#include "apps/AppShortcutButton.h"

#include "apps/AppBadgeService.h"
#include "apps/AppLauncher.h"
#include "apps/RunningAppsService.h"
#include "chrome/BarStage.h"
#include "files/DroppedFiles.h"
#include "platform/AppBundles.h"
#include "settings/SettingsStore.h"
#include "theme/DevicePixels.h"

#include <QPainter>
#include <algorithm>

namespace moorline {

namespace {

const QColor dotColor = QColor::fromRgbF(1, 1, 1, 0.55F);

} // namespace

AppShortcutButton::AppShortcutButton(const Context &context, AppShortcut shortcut, bool isPinned, QGraphicsItem *parent)
    : IconButton(
        {.icons = context.icons, .clock = context.clock, .pointer = context.pointer, .panelFrame = context.panelFrame},
        parent)
    , m_context(context)
    , m_shortcut(std::move(shortcut))
    , m_isPinned(isPinned)
{
    if (m_isPinned)
        setDraggable(DragKind::out);
    connect(this, &BarItem::clicked, this, [this] { m_context.launcher.launch(m_shortcut); });
    connect(this, &BarItem::menuRequested, this, [this] { m_context.stage.openMenu(*this, menu()); });
    connect(&context.bundles, &AppBundles::changed, this, &AppShortcutButton::identify);
    connect(&context.running, &RunningAppsService::runningBundleIDsChanged, this, &AppShortcutButton::updateRunning);
    connect(&context.badges, &AppBadgeService::badgesChanged, this, &AppShortcutButton::updateBadge);
    m_badge.setIconSize(iconSize());
    identify();
}

void AppShortcutButton::setShortcut(const AppShortcut &shortcut)
{
    if (shortcut == m_shortcut)
        return;
    m_shortcut = shortcut;
    identify();
}

void AppShortcutButton::iconSizeChanged()
{
    m_badge.setIconSize(iconSize());
}

void AppShortcutButton::identify()
{
    m_identity = identityOf(m_shortcut, m_context.bundles);
    showIcon(IconKind::application, m_identity.path);
    setHelpText(m_identity.name);
    updateRunning();
    updateBadge();
    describe();
}

void AppShortcutButton::updateRunning()
{
    const bool isRunning = std::any_of(m_identity.identifiers.begin(), m_identity.identifiers.end(),
        [this](const QString &identifier) { return m_context.running.isRunning(identifier); });
    if (isRunning == m_isRunning)
        return;
    m_isRunning = isRunning;
    update(dotRect());
    describe();
}

void AppShortcutButton::updateBadge()
{
    QString badge;
    for (const QString &identifier : std::as_const(m_identity.identifiers)) {
        if (badge.isEmpty())
            badge = m_context.badges.badges().value(identifier);
    }
    if (BadgeView::display(badge) == m_badge.text())
        return;
    update(growingRect());
    prepareGeometryChange();
    m_badge.setBadge(badge);
    update(growingRect());
    describe();
}

void AppShortcutButton::describe()
{
    QStringList state;
    if (m_isRunning)
        state.append(tr("Running"));
    if (!m_badge.text().isEmpty())
        state.append(m_badge.text());
    setDescription({.role = QAccessible::Button, .name = m_identity.name, .state = state.join(QStringLiteral(", "))});
}

Menu AppShortcutButton::menu() const
{
    // What is chosen may be chosen when the button is gone.
    AppLauncher *launcher = &m_context.launcher;
    SettingsStore *store = &m_context.store;
    const AppShortcut shortcut = m_shortcut;
    Menu menu{{.title = tr("Open %1").arg(m_identity.name), .action = [=] { launcher->launch(shortcut); }},
        MenuItem::separator()};
    if (m_isPinned)
        menu.append({.title = tr("Remove from Dock"), .action = [=] { store->removeShortcut(shortcut); }});
    else
        menu.append({.title = tr("Pin to Dock"), .action = [=] { store->addShortcut(shortcut); }});
    if (!m_context.launcher.canQuit(shortcut))
        return menu;
    menu.append(MenuItem::separator());
    menu.append({.title = tr("Quit %1").arg(m_identity.name), .action = [=] { launcher->quit(shortcut); }});
    return menu;
}

bool AppShortcutButton::takesDrop(const QStringList &formats) const
{
    // Also for an application that takes none: they are meant for it, and not to be pinned by the bar below.
    return mayHoldFiles(formats);
}

Qt::DropAction AppShortcutButton::dropAnswer(Qt::DropActions possible) const
{
    if (possible.testFlag(Qt::LinkAction))
        return Qt::LinkAction;
    return possible.testFlag(Qt::CopyAction) ? Qt::CopyAction : Qt::IgnoreAction;
}

bool AppShortcutButton::refusesDrop() const
{
    return !m_context.launcher.takesFiles(m_shortcut);
}

void AppShortcutButton::dropRefused()
{
    m_context.launcher.refuseFiles(m_shortcut);
}

bool AppShortcutButton::drop(const QMimeData &data)
{
    const QList<QUrl> files = loadDroppedFileURLs(data);
    // The launcher says why where it takes none.
    m_context.launcher.open(files, m_shortcut);
    return !files.isEmpty() && m_context.launcher.takesFiles(m_shortcut);
}

QRectF AppShortcutButton::growingRect() const
{
    return IconButton::growingRect().united(m_badge.boundingRect());
}

void AppShortcutButton::paintBehind(QPainter &painter)
{
    if (!m_isRunning)
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(dotColor);
    painter.drawEllipse(QRectF(snappedToPixels(painter, dotRect().topLeft()), dotRect().size()));
}

void AppShortcutButton::paintOver(QPainter &painter)
{
    m_badge.paint(painter);
}

} // namespace moorline
