#pragma once

#include "weather/WeatherRequests.h"

namespace moorline {

/// The public services, which ask for no key.
[[nodiscard]] WeatherEndpoints publicWeatherEndpoints();
/// One server, such as "http://localhost:8080", that answers for all of them on the same paths. It may be near.
[[nodiscard]] WeatherEndpoints weatherEndpoints(const QUrl &origin);

} // namespace moorline
