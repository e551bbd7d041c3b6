// rejected: 'activate' is only available on macOS 14.0 or newer
#import <AppKit/AppKit.h>

@interface NSApplication (Newer)
// https://developer.apple.com/documentation/appkit/nsapplication/activate()
- (void)activate API_AVAILABLE(macos(14.0));
@end

void comeForward()
{
    [NSApp activate];
}
