#pragma once

#include <QColor>
#include <QString>

namespace moorline {

/// A colour in sRGB from RRGGBB or RRGGBBAA, with or without a leading number sign and surrounding white space.
/// What is not a hexadecimal number counts as zero; any other length is opaque white.
[[nodiscard]] QColor colorFromHex(const QString &hex);

/// The form "#rrggbb" in lower case. The opacity is dropped.
[[nodiscard]] QString hexString(const QColor &color);

} // namespace moorline
