#pragma once

#import <AppKit/AppKit.h>

#include <QImage>
#include <QSizeF>

namespace moorline {

/// The image drawn over `size` points, at `scale` device pixels per point. Null where there is no memory for it.
[[nodiscard]] QImage rendered(NSImage *image, const QSizeF &size, qreal scale);

} // namespace moorline
