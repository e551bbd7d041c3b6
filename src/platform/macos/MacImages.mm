#import "platform/macos/MacImages.h"

#import "platform/macos/CFPointer.h"

#include <cmath>

namespace moorline {

namespace {

/// Alpha first in the machine's own byte order: what QImage calls ARGB32_Premultiplied.
constexpr CGBitmapInfo bitmapInfo =
    CGBitmapInfo(kCGImageAlphaPremultipliedFirst) | CGBitmapInfo(kCGBitmapByteOrder32Host);

CFPointer<CGContextRef> contextFor(QImage &target)
{
    const CFPointer<CGColorSpaceRef> colorSpace(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    return CFPointer<CGContextRef>(CGBitmapContextCreate(target.bits(), size_t(target.width()), size_t(target.height()),
        8, size_t(target.bytesPerLine()), colorSpace.get(), bitmapInfo));
}

/// `context` stands for an image of `scale` pixels per point.
void draw(NSImage *image, CGContextRef context, const QSizeF &size, qreal scale)
{
    CGContextScaleCTM(context, scale, scale);
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context flipped:NO];
    [image drawInRect:NSMakeRect(0, 0, size.width(), size.height())];
    [NSGraphicsContext restoreGraphicsState];
}

} // namespace

QImage rendered(NSImage *image, const QSizeF &size, qreal scale)
{
    QImage result(int(std::ceil(size.width() * scale)), int(std::ceil(size.height() * scale)),
        QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    if (const auto context = contextFor(result))
        draw(image, context.get(), size, scale);
    result.setDevicePixelRatio(scale);
    return result;
}

} // namespace moorline
