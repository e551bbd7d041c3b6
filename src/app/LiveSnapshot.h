#pragma once

#include <QString>

namespace moorline {

class DockPanel;

/// Pictures of the panel as it is on screen.
namespace LiveSnapshot {

/// Writes a PNG of the panel's content at the scale of its screen and logs how it went. `panel` may be null.
void capture(const DockPanel *panel, const QString &path);

} // namespace LiveSnapshot

} // namespace moorline
