#pragma once

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

// Geometry

// https://developer.apple.com/documentation/corefoundation/cgfloat
typedef double CGFloat;

// https://developer.apple.com/documentation/corefoundation/cgpoint
struct CGPoint {
    CGFloat x;
    CGFloat y;
};
typedef struct CGPoint CGPoint;

// https://developer.apple.com/documentation/corefoundation/cgsize
struct CGSize {
    CGFloat width;
    CGFloat height;
};
typedef struct CGSize CGSize;

// https://developer.apple.com/documentation/corefoundation/cgrect
struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef struct CGRect CGRect;

// https://developer.apple.com/documentation/coregraphics/cgrectzero
extern const CGRect CGRectZero;
// https://developer.apple.com/documentation/coregraphics/cgrectmake
CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height);
// https://developer.apple.com/documentation/coregraphics/cgrectmakewithdictionaryrepresentation(_:_:)
bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef dict, CGRect *rect);

// Displays and sessions

// https://developer.apple.com/documentation/coregraphics/cgdirectdisplayid
typedef uint32_t CGDirectDisplayID;
// https://developer.apple.com/documentation/coregraphics/cgmaindisplayid()
CGDirectDisplayID CGMainDisplayID(void);
// https://developer.apple.com/documentation/coregraphics/cgsessioncopycurrentdictionary()
// Null outside a session with a window server. The caller owns the dictionary.
CFDictionaryRef CGSessionCopyCurrentDictionary(void) __attribute__((cf_returns_retained));

// Windows

// https://developer.apple.com/documentation/coregraphics/cgwindowid
typedef uint32_t CGWindowID;
// https://developer.apple.com/documentation/coregraphics/kcgnullwindowid
#define kCGNullWindowID ((CGWindowID)0)

// https://developer.apple.com/documentation/coregraphics/cgwindowlistoption
typedef uint32_t CGWindowListOption;
enum : CGWindowListOption {
    kCGWindowListOptionOnScreenOnly = (1 << 0),
    kCGWindowListExcludeDesktopElements = (1 << 4),
};

// https://developer.apple.com/documentation/coregraphics/cgwindowlistcopywindowinfo(_:_:)
// Null outside a session with a window server. The caller owns the array.
CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeToWindow)
    __attribute__((cf_returns_retained));

// https://developer.apple.com/documentation/coregraphics/required-window-list-keys
extern const CFStringRef kCGWindowLayer;
extern const CFStringRef kCGWindowNumber;
extern const CFStringRef kCGWindowBounds;
extern const CFStringRef kCGWindowOwnerPID;
// https://developer.apple.com/documentation/coregraphics/optional-window-list-keys
extern const CFStringRef kCGWindowOwnerName;

// https://developer.apple.com/documentation/coregraphics/cgwindowlevelkey
enum CGWindowLevelKey : int32_t {
    kCGBaseWindowLevelKey = 0,
    kCGMinimumWindowLevelKey,
    kCGDesktopWindowLevelKey,
    kCGBackstopMenuLevelKey,
    kCGNormalWindowLevelKey,
    kCGFloatingWindowLevelKey,
    kCGTornOffMenuWindowLevelKey,
    kCGDockWindowLevelKey,
    kCGMainMenuWindowLevelKey,
};
// https://developer.apple.com/documentation/coregraphics/cgwindowlevel
typedef int32_t CGWindowLevel;
// https://developer.apple.com/documentation/coregraphics/cgwindowlevelforkey(_:)
CGWindowLevel CGWindowLevelForKey(CGWindowLevelKey key);

// Drawing

// https://developer.apple.com/documentation/coregraphics/cgcolorspace
typedef struct MOORLINE_BRIDGED(id) CGColorSpace *CGColorSpaceRef;
// https://developer.apple.com/documentation/coregraphics/cgcolorspace/srgb
extern const CFStringRef kCGColorSpaceSRGB;
// https://developer.apple.com/documentation/coregraphics/cgcolorspace/init(name:)
CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name) __attribute__((cf_returns_retained));

// https://developer.apple.com/documentation/coregraphics/cgcontext
typedef struct MOORLINE_BRIDGED(id) CGContext *CGContextRef;

// https://developer.apple.com/documentation/coregraphics/cgimagealphainfo
enum CGImageAlphaInfo : uint32_t {
    kCGImageAlphaPremultipliedFirst = 2,
};
// https://developer.apple.com/documentation/coregraphics/cgimagebyteorderinfo
enum CGImageByteOrderInfo : uint32_t {
    kCGImageByteOrder32Little = (2 << 12),
};
// https://developer.apple.com/documentation/coregraphics/cgbitmapinfo
typedef uint32_t CGBitmapInfo;
enum : CGBitmapInfo {
    kCGBitmapByteOrder32Little = kCGImageByteOrder32Little,
};
// https://developer.apple.com/documentation/coregraphics/kcgbitmapbyteorder32host
// Apple silicon and Intel are both little-endian.
#define kCGBitmapByteOrder32Host kCGBitmapByteOrder32Little

// https://developer.apple.com/documentation/coregraphics/cgbitmapcontextcreate
CGContextRef CGBitmapContextCreate(void *data, size_t width, size_t height, size_t bitsPerComponent, size_t bytesPerRow,
    CGColorSpaceRef space, uint32_t bitmapInfo) __attribute__((cf_returns_retained));
// https://developer.apple.com/documentation/coregraphics/cgcontextscalectm
void CGContextScaleCTM(CGContextRef c, CGFloat sx, CGFloat sy);

} // extern "C"
