#pragma once

#import <AppKit/AppKit.h>

#include <functional>

/// Has a menu filled anew each time it is about to open.
@interface MoorlineStatusMenu : NSObject <NSMenuDelegate>
- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithFilling:(std::function<void(NSMenu *)>)filling NS_DESIGNATED_INITIALIZER;
@end
