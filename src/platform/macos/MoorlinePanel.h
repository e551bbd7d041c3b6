#pragma once

#import <AppKit/AppKit.h>

/// The window the bar lives in. It never becomes key or main, so a click on the bar leaves the focus where it is.
@interface MoorlinePanel : NSPanel
@end

/// Keeps its one subview as large as itself.
@interface MoorlinePanelContent : NSView
@end
