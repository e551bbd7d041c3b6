#pragma once

#include <QByteArray>
#include <QImage>

namespace moorline {

/// What kind of picture data begins like this, in the words of QImageReader. Empty for none, and for any kind that can
/// draw, name other files, or hold further pictures of any size.
[[nodiscard]] QByteArray rasterFormat(const QByteArray &data);

/// A picture as it is meant to be seen, scaled to a square of `side` pixels: it fills it in its own proportions, and
/// what lies beyond is cut off. Null for anything but pixels, and for more of them than Pictures allows. May be called
/// on any thread.
[[nodiscard]] QImage rasterPicture(const QByteArray &data, int side);

} // namespace moorline
