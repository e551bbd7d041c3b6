#pragma once

namespace moorline {

/// What can stand in the bar's row, in canonical order.
enum class WidgetKind { clock, calendar, weather, forecast, music, monthCounter, appShortcut, recentApps, pinnedItems };

} // namespace moorline
