// rejected: requires a bridged cast
#import <AppKit/AppKit.h>

#include <QWidget>

NSView *viewOf(const QWidget &widget)
{
    return (NSView *)reinterpret_cast<void *>(widget.winId());
}
