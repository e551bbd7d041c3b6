#import "platform/macos/MacSymbolCatalogue.h"

#import "platform/macos/Conversions.h"
#import "platform/macos/MacImages.h"

#include <QPainter>

namespace moorline {

namespace {

NSFontWeight fontWeight(SymbolWeight weight)
{
    switch (weight) {
    case SymbolWeight::regular:
        return NSFontWeightRegular;
    case SymbolWeight::semibold:
        return NSFontWeightSemibold;
    }
    Q_UNREACHABLE();
}

/// Black throughout: the layers differ in opacity alone, and the colour comes last.
NSImageSymbolConfiguration *configurationFor(const SymbolRequest &request)
{
    NSImageSymbolConfiguration *size =
        [NSImageSymbolConfiguration configurationWithPointSize:request.pointSize weight:fontWeight(request.weight)];
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
    QImage result = rendered(image, {image.size.width, image.size.height}, request.scale);
    tint(result, request.color);
    return result;
}

} // namespace moorline
