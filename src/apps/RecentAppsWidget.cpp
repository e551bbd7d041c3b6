#include "apps/RecentAppsWidget.h"

#include "apps/RecentAppsService.h"
#include "settings/Choices.h"

namespace moorline {

RecentAppsWidget::RecentAppsWidget(
    const RecentAppsService &recent, AppShortcutButton::Context context, QGraphicsItem *parent)
    : AppIconRow(std::move(context), false, parent)
    , m_recent(recent)
{
    setDescription({.role = QAccessible::Grouping, .name = label(WidgetKind::recentApps), .state = {}});
    connect(&recent, &RecentAppsService::recentChanged, this, &RecentAppsWidget::refresh);
    refresh();
}

void RecentAppsWidget::refresh()
{
    show(m_recent.recent());
}

} // namespace moorline
