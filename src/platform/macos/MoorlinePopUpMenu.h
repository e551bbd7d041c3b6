#pragma once

#include "platform/PopupWindows.h"

#import <AppKit/AppKit.h>

/// One menu that opens at a place of the screen. It runs a loop of its own until it closes, in which the bar lives on
/// and may let go of the menu: it opens from the run loop, with nobody's call waiting for it but its own.
@interface MoorlinePopUpMenu : NSObject
- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithItems:(const moorline::Menu &)items
                    placement:(moorline::PopupWindows::MenuPlacement)placement
                       closed:(moorline::PopupWindows::Closed)closed NS_DESIGNATED_INITIALIZER;
- (void)openSoon;
/// Closes it, or keeps it from opening, without telling anyone.
- (void)cancel;
@end
