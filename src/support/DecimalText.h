#pragma once

#include <QString>

namespace moorline {

/// Shortest decimal text that reads back as the same number, always with a fraction: "0.5", "1.0".
[[nodiscard]] QString decimalText(double value);

} // namespace moorline
