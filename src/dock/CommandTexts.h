#pragma once

#include <QString>

namespace moorline {

/// The titles of commands that stand in more than one menu.
namespace CommandTexts {

[[nodiscard]] QString dockSettings();
[[nodiscard]] QString quit();

} // namespace CommandTexts

} // namespace moorline
