#pragma once

#include <QImage>
#include <QString>

namespace moorline::test {

/// How far a picture is from the one it is compared with.
struct PictureDifference {
    /// Pixels that differ by more than another release of the font rasterizer makes them differ.
    qsizetype pixels = 0;
    /// By how much a pixel differs on average, in levels of 255: what is faint but large shows here, as a shadow does.
    qreal mean = 0;
    /// The differences, white on black. Null where the sizes differ.
    QImage picture;
};

[[nodiscard]] PictureDifference difference(const QImage &picture, const QImage &reference);

/// Compares a picture with the reference of that name and of the scale of this run. Empty when they are the same to the
/// eye, else what is wrong; the picture and the difference are then to be found beside the test program. While
/// MOORLINE_RENEW_PICTURES is set, the picture becomes the reference instead.
[[nodiscard]] QString compareWithReference(const QImage &picture, const QString &name);

} // namespace moorline::test
