#pragma once

#include "platform/Geocoder.h"

namespace moorline {

/// The city of libgweather's database that is nearest to a place on earth, in degrees. Absent without the library or
/// its database. Walks the whole database, and is for one thread at a time.
[[nodiscard]] std::optional<Placemark> nearestCity(double latitude, double longitude);

} // namespace moorline
