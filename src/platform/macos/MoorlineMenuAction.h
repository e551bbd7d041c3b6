#pragma once

#import <Foundation/Foundation.h>

#include <functional>

/// What choosing one item of a menu does.
@interface MoorlineMenuAction : NSObject
- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithAction:(std::function<void()>)action NS_DESIGNATED_INITIALIZER;
- (void)choose:(id)sender;
@end
