#pragma once

#include <QImage>
#include <QString>

namespace moorline {

/// The picture in a PNG, SVG or XPM file, fitted into a square of `side` pixels. Null for anything that is not a
/// regular file of a reasonable size, or not drawn by itself alone. May be called on any thread.
[[nodiscard]] QImage iconPicture(const QString &path, int side);

} // namespace moorline
