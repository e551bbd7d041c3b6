#pragma once

#include "apps/AppIconRow.h"

namespace moorline {

class RecentAppsService;

/// The applications used last, the most recent first.
class RecentAppsWidget final : public AppIconRow {
    Q_OBJECT
public:
    /// `recent` outlives the widget.
    RecentAppsWidget(
        const RecentAppsService &recent, AppShortcutButton::Context context, QGraphicsItem *parent = nullptr);

private:
    void refresh();

    const RecentAppsService &m_recent;
};

} // namespace moorline
