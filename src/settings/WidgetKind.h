#pragma once

#include <QList>
#include <QString>

namespace moorline {

/// What can stand in the bar's row, in canonical order.
enum class WidgetKind { clock, calendar, weather, forecast, music, monthCounter, appShortcut, recentApps, pinnedItems };

/// Every kind, in canonical order.
[[nodiscard]] const QList<WidgetKind> &allWidgetKinds();
/// The text of the kind in the settings file.
[[nodiscard]] QString rawValue(WidgetKind kind);
/// What the settings window calls the kind, and what it says of it.
[[nodiscard]] QString title(WidgetKind kind);
[[nodiscard]] QString description(WidgetKind kind);

} // namespace moorline
