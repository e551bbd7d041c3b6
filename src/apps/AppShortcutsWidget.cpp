#include "apps/AppShortcutsWidget.h"

#include "settings/Choices.h"
#include "settings/Reordered.h"
#include "settings/SettingsStore.h"

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

void AppShortcutsWidget::keepOrder(const QStringList &ids)
{
    context().store.change(
        [&ids](Settings &settings) { settings.appShortcuts = reordered(std::move(settings.appShortcuts), ids); });
}

void AppShortcutsWidget::removed(const IconButton &button)
{
    context().store.removeShortcut(static_cast<const AppShortcutButton &>(button).shortcut());
}

} // namespace moorline
