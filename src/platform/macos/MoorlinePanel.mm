#import "platform/macos/MoorlinePanel.h"

#include <QWidget>

@implementation MoorlinePanel

- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag
{
    self = [super initWithContentRect:contentRect styleMask:style backing:backing defer:flag];
    self.opaque = NO;
    self.backgroundColor = NSColor.clearColor;
    self.hasShadow = NO;
    self.movableByWindowBackground = NO;
    self.hidesOnDeactivate = NO;
    self.ignoresMouseEvents = NO;
    self.acceptsMouseMovedEvents = YES;
    self.releasedWhenClosed = NO;
    self.animationBehavior = NSWindowAnimationBehaviorNone;
    self.excludedFromWindowsMenu = YES;
    return self;
}

- (instancetype)initWithCoder:(NSCoder *)coder
{
    qFatal("init(coder:) is not used");
}

- (BOOL)canBecomeKeyWindow
{
    return NO;
}

- (BOOL)canBecomeMainWindow
{
    return NO;
}

@end

@implementation MoorlinePopupPanel

- (BOOL)canBecomeKeyWindow
{
    return YES;
}

@end

@implementation MoorlinePanelContent

// Qt resizes its view too, when the widget is resized. Filling works whoever was first; an autoresizing mask adds the
// difference a second time.
- (void)resizeSubviewsWithOldSize:(NSSize)oldSize
{
    self.subviews.firstObject.frame = self.bounds;
}

@end

namespace moorline {

void embed(QWidget &widget, NSView *content)
{
    // Its window gives it its size; shown for the first time, it would take one from its content.
    widget.setAttribute(Qt::WA_Resized);
    NSView *view = (__bridge NSView *)reinterpret_cast<void *>(widget.winId());
    view.frame = content.bounds;
    [content addSubview:view];
}

} // namespace moorline
