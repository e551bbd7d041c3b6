#pragma once

#include <QImage>

namespace moorline {

/// How far outside a shape its blur still shows, in pixels.
[[nodiscard]] int blurMargin(qreal standardDeviation);
/// A near-Gaussian blur of an alpha mask (Format_Alpha8). Nothing comes in from outside the image.
[[nodiscard]] QImage blurred(const QImage &mask, qreal standardDeviation);

} // namespace moorline
