#import "platform/macos/MoorlinePanel.h"

#include <QtGlobal>

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

@implementation MoorlinePanelContent

// Qt resizes its view too, when the widget is resized. Filling works whoever was first; an autoresizing mask adds the
// difference a second time.
- (void)resizeSubviewsWithOldSize:(NSSize)oldSize
{
    self.subviews.firstObject.frame = self.bounds;
}

@end
