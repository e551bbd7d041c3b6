#pragma once

#include <stddef.h>
#include <stdint.h>

#define MOORLINE_BRIDGED(type) __attribute__((objc_bridge(type)))

extern "C" {

// https://developer.apple.com/documentation/corefoundation/cftyperef
typedef const void *CFTypeRef;
// https://developer.apple.com/documentation/corefoundation/cftypeid
typedef unsigned long CFTypeID;
// https://developer.apple.com/documentation/corefoundation/boolean
typedef unsigned char Boolean;

// https://developer.apple.com/documentation/corefoundation/cfarray
typedef const struct MOORLINE_BRIDGED(NSArray) __CFArray *CFArrayRef;
// https://developer.apple.com/documentation/corefoundation/cfdictionary
typedef const struct MOORLINE_BRIDGED(NSDictionary) __CFDictionary *CFDictionaryRef;
// https://developer.apple.com/documentation/corefoundation/cfnumber
typedef const struct MOORLINE_BRIDGED(NSNumber) __CFNumber *CFNumberRef;
// https://developer.apple.com/documentation/corefoundation/cfstring
typedef const struct MOORLINE_BRIDGED(NSString) __CFString *CFStringRef;
// https://developer.apple.com/documentation/corefoundation/cfuuid
typedef const struct MOORLINE_BRIDGED(id) __CFUUID *CFUUIDRef;

// https://developer.apple.com/documentation/corefoundation/cfallocator
typedef const struct MOORLINE_BRIDGED(id) __CFAllocator *CFAllocatorRef;
// https://developer.apple.com/documentation/corefoundation/kcfallocatordefault
extern const CFAllocatorRef kCFAllocatorDefault;

// https://developer.apple.com/documentation/corefoundation/cfrelease
// The argument must not be null.
void CFRelease(CFTypeRef cf) __attribute__((nonnull(1)));
// https://developer.apple.com/documentation/corefoundation/cfgettypeid(_:)
CFTypeID CFGetTypeID(CFTypeRef cf);
// https://developer.apple.com/documentation/corefoundation/cfbooleangettypeid()
CFTypeID CFBooleanGetTypeID(void);
// https://developer.apple.com/documentation/corefoundation/cfnumberisfloattype(_:)
Boolean CFNumberIsFloatType(CFNumberRef number);
// https://developer.apple.com/documentation/corefoundation/cfuuidcreatestring(_:_:)
// The caller owns the string.
CFStringRef CFUUIDCreateString(CFAllocatorRef alloc, CFUUIDRef uuid) __attribute__((cf_returns_retained));

} // extern "C"
