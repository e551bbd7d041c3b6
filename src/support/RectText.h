#pragma once

#include <QRectF>
#include <QString>

namespace moorline {

/// "(x, y, width, height)" as decimal numbers with a fraction, for log lines.
[[nodiscard]] QString rectText(const QRectF &rect);

} // namespace moorline
