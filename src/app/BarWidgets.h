#pragma once

#include "settings/WidgetKind.h"

#include <memory>

namespace moorline {

class BarWidget;
struct Services;

/// The widget of a kind, built on the services, which outlive it. Null for a kind that the settings know before the
/// program has a widget for it.
[[nodiscard]] std::unique_ptr<BarWidget> makeBarWidget(WidgetKind kind, Services &services);

} // namespace moorline
