#pragma once

#include <QString>

/// Text and symbol of a WMO weather code (WMO code table 4677, as far as forecasts use it).
namespace moorline::WeatherIcon {

/// The name of the symbol in the symbol catalogue. A cloud for codes that are not known.
[[nodiscard]] QString symbol(qint64 code, bool isDay);
/// In the user's language; a dash for codes that are not known.
[[nodiscard]] QString description(qint64 code);

} // namespace moorline::WeatherIcon
