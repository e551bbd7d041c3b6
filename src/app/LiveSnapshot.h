#pragma once

#include "platform/Clock.h"

namespace moorline {

class DockPanel;

/// Pictures of the panel as it is on screen.
namespace LiveSnapshot {

/// What the program waits before it takes the picture, so that what the widgets show has arrived.
inline constexpr std::chrono::seconds delay{8};

/// Takes the picture of the panel there is after that time, and ends the program whatever came of it.
[[nodiscard]] std::unique_ptr<Clock::Timer> schedule(
    Clock &clock, std::function<const DockPanel *()> panel, QString path, std::function<void()> terminate);

/// Writes a PNG of the panel's content at the scale of its screen and logs how it went. `panel` may be null.
void capture(const DockPanel *panel, const QString &path);

} // namespace LiveSnapshot

} // namespace moorline
