#pragma once

#include <Availability.h>

// https://developer.apple.com/documentation/objectivec/objective-c-runtime

// https://developer.apple.com/documentation/objectivec/bool
// A C++ bool on Apple silicon, a character on Intel's.
#if __OBJC_BOOL_IS_BOOL
using BOOL = bool;
#else
using BOOL = signed char;
#endif
#define YES __objc_yes
#define NO __objc_no

// https://developer.apple.com/documentation/objectivec/nil
#define nil nullptr

// https://developer.apple.com/documentation/objectivec/nsinteger
using NSInteger = long;
// https://developer.apple.com/documentation/objectivec/nsuinteger
using NSUInteger = unsigned long;

// https://developer.apple.com/documentation/swift/objective-c-and-c-code-customization
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_UNAVAILABLE __attribute__((unavailable))

@class NSString;

// https://developer.apple.com/documentation/objectivec/nsobject-c.protocol
@protocol NSObject
- (BOOL)isKindOfClass:(Class)aClass;
@end

// https://developer.apple.com/documentation/objectivec/nsobject-swift.class
__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (id)copy;
@end
