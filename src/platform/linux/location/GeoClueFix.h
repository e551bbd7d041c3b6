#pragma once

#include "platform/LocationManager.h"

#include <QVariantMap>

namespace moorline {

/// The position in the properties of a GeoClue location object. Absent unless latitude and longitude are places on
/// earth. One without a time, or with one still to come, is taken to be of `now`.
[[nodiscard]] std::optional<PositionFix> positionFix(const QVariantMap &location, const QDateTime &now);

} // namespace moorline
