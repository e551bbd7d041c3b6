#pragma once

#include "dock/BarMenu.h"
#include "settings/WidgetKind.h"

#include <functional>
#include <memory>

namespace moorline {

class BarWidget;
class DockBarView;
struct Services;

/// The widget of a kind, built on the services, which outlive it.
[[nodiscard]] std::unique_ptr<BarWidget> makeBarWidget(WidgetKind kind, Services &services);
/// A bar of such widgets, on the same terms.
[[nodiscard]] std::unique_ptr<DockBarView> makeBar(
    Services &services, const BarCommands &commands, std::function<void(qreal)> contentWidthChange);

} // namespace moorline
