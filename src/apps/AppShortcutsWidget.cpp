#include "apps/AppShortcutsWidget.h"

#include "settings/Choices.h"
#include "settings/SettingsStore.h"

#include <algorithm>

namespace moorline {

AppShortcutsWidget::AppShortcutsWidget(AppShortcutButton::Context context, QGraphicsItem *parent)
    : AppIconRow(std::move(context), true, parent)
{
    setAcceptDrops(true);
    setDescription({.role = QAccessible::Grouping, .name = label(WidgetKind::appShortcut), .state = {}});
    connect(&this->context().store, &SettingsStore::settingsDidChange, this, [this](const Settings &before) {
        if (before.appShortcuts != this->context().store.settings().appShortcuts)
            refresh();
    });
    refresh();
}

void AppShortcutsWidget::refresh()
{
    show(context().store.settings().appShortcuts);
}

void AppShortcutsWidget::welcome(AppShortcutButton &button)
{
    connect(&button, &BarItem::draggedChanged, this, [this, carried = &button] {
        if (carried->isDragged())
            setCarried(carried);
    });
    connect(
        &button, &AppShortcutButton::letGo, this, [this, carried = &button](bool isOff) { letGo(*carried, isOff); });
    connect(&button, &AppShortcutButton::carryingCancelled, this, &AppShortcutsWidget::restore);
}

void AppShortcutsWidget::setCarried(AppShortcutButton *carried)
{
    prepareGeometryChange();
    m_carried = carried;
}

QRectF AppShortcutsWidget::boundingRect() const
{
    const QGraphicsWidget *bar = m_carried ? parentWidget() : nullptr;
    const QRectF row = AppIconRow::boundingRect();
    // A quick pointer is beyond the last icon before it was seen on it.
    return bar ? row.united(mapRectFromParent(bar->rect())) : row;
}

bool AppShortcutsWidget::takesReorder(const QString &id) const
{
    return m_carried && m_carried->shortcut().id() == id;
}

void AppShortcutsWidget::reorderMoved(const QString &, const QPointF &place)
{
    const qsizetype from = buttons().indexOf(m_carried);
    if (from < 0)
        return;
    const qsizetype to = placeNear(mapFromScene(place), from);
    if (to != from)
        move(from, to);
}

void AppShortcutsWidget::letGo(const AppShortcutButton &button, bool isOff)
{
    if (m_carried == &button)
        setCarried(nullptr);
    if (isOff)
        return context().store.removeShortcut(button.shortcut());
    QStringList ids;
    for (const AppShortcutButton *one : buttons())
        ids.append(one->shortcut().id());
    context().store.change(
        [&ids](Settings &settings) { settings.appShortcuts = reordered(std::move(settings.appShortcuts), ids); });
}

void AppShortcutsWidget::restore()
{
    setCarried(nullptr);
    const QList<AppShortcut> &shortcuts = context().store.settings().appShortcuts;
    for (qsizetype to = 0; to < shortcuts.size(); ++to) {
        const auto from = std::find_if(buttons().begin() + to, buttons().end(),
            [&](const AppShortcutButton *one) { return one->shortcut() == shortcuts[to]; });
        if (from != buttons().end())
            move(from - buttons().begin(), to);
    }
}

QList<AppShortcut> reordered(QList<AppShortcut> shortcuts, const QStringList &ids)
{
    QList<AppShortcut> answer;
    for (const QString &id : ids) {
        const auto found = std::find_if(
            shortcuts.begin(), shortcuts.end(), [&id](const AppShortcut &shortcut) { return shortcut.id() == id; });
        if (found == shortcuts.end())
            continue;
        answer.append(*found);
        shortcuts.erase(found);
    }
    return answer + shortcuts;
}

} // namespace moorline
