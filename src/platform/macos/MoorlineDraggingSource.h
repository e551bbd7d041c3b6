#pragma once

#import <AppKit/AppKit.h>

#include <functional>

/// Says what may be done with a file that is carried, and learns when it was let go. Keeps itself until then.
@interface MoorlineDraggingSource : NSObject <NSDraggingSource>
- (instancetype)init NS_UNAVAILABLE;
/// `press` is what the drag follows from. `ended` is called once, in a turn of its own.
- (instancetype)initWithPress:(NSEvent *)press ended:(std::function<void()>)ended NS_DESIGNATED_INITIALIZER;
/// For a drag that did not even begin.
- (void)finishSoon;
@end
