// rejected: cannot initialize return object of type 'NSArray *' with an rvalue of type 'CFArrayRef'
#import <Foundation/Foundation.h>

#import <CoreGraphics/CoreGraphics.h>

NSArray *windows()
{
    return CGWindowListCopyWindowInfo(kCGWindowListOptionOnScreenOnly, kCGNullWindowID);
}
