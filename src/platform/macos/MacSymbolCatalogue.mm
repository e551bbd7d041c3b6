#import "platform/macos/MacSymbolCatalogue.h"

#import "platform/macos/CFPointer.h"
#import "platform/macos/Conversions.h"

#import <AppKit/AppKit.h>

#include <QPainter>
#include <cmath>

namespace moorline {

namespace {

/// Alpha first in the machine's own byte order: what QImage calls ARGB32_Premultiplied.
constexpr CGBitmapInfo bitmapInfo =
    CGBitmapInfo(kCGImageAlphaPremultipliedFirst) | CGBitmapInfo(kCGBitmapByteOrder32Host);

/// Black throughout: the layers differ in opacity alone, and the colour comes last.
NSImageSymbolConfiguration *configurationFor(const SymbolRequest &request)
{
    NSImageSymbolConfiguration *size = [NSImageSymbolConfiguration configurationWithPointSize:request.pointSize
                                                                                       weight:NSFontWeightRegular];
    switch (request.rendering) {
    case SymbolRendering::monochrome:
        return size;
    case SymbolRendering::hierarchical:
        return [size configurationByApplyingConfiguration:[NSImageSymbolConfiguration
                                                              configurationWithHierarchicalColor:NSColor.blackColor]];
    }
    Q_UNREACHABLE();
}

NSImage *symbolImage(const SymbolRequest &request)
{
    NSImage *image = [NSImage imageWithSystemSymbolName:toNSString(request.name) accessibilityDescription:nil];
    return [image imageWithSymbolConfiguration:configurationFor(request)];
}

CFPointer<CGContextRef> contextFor(QImage &target)
{
    const CFPointer<CGColorSpaceRef> colorSpace(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    return CFPointer<CGContextRef>(CGBitmapContextCreate(target.bits(), size_t(target.width()), size_t(target.height()),
        8, size_t(target.bytesPerLine()), colorSpace.get(), bitmapInfo));
}

/// `context` stands for an image of `scale` pixels per point.
void draw(NSImage *image, CGContextRef context, qreal scale)
{
    CGContextScaleCTM(context, scale, scale);
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context flipped:NO];
    [image drawInRect:NSMakeRect(0, 0, image.size.width, image.size.height)];
    [NSGraphicsContext restoreGraphicsState];
}

QImage rendered(NSImage *image, qreal scale)
{
    const QSizeF size(image.size.width, image.size.height);
    QImage result(int(std::ceil(size.width() * scale)), int(std::ceil(size.height() * scale)),
        QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    if (const auto context = contextFor(result))
        draw(image, context.get(), scale);
    return result;
}

void tint(QImage &image, const QColor &color)
{
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
}

} // namespace

QImage MacSymbolCatalogue::symbol(const SymbolRequest &request) const
{
    NSImage *image = symbolImage(request);
    if (!image)
        return {};
    QImage result = rendered(image, request.scale);
    tint(result, request.color);
    result.setDevicePixelRatio(request.scale);
    return result;
}

} // namespace moorline
