#pragma once

#include "platform/WindowServer.h"

#include <QVariant>

namespace moorline {

/// The displays as macOS's window server lists them: one dictionary (QVariantMap) for each, with "Display Identifier"
/// (text) and "Current Space", a dictionary whose "type" is an integer. What is missing or of another type is absent.
[[nodiscard]] QList<DisplaySpace> displaySpacesFrom(const QVariantList &displays);

} // namespace moorline
