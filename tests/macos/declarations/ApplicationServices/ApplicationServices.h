#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <sys/types.h>

extern "C" {

// https://developer.apple.com/documentation/applicationservices/axuielement
typedef const struct MOORLINE_BRIDGED(id) __AXUIElement *AXUIElementRef;

// https://developer.apple.com/documentation/applicationservices/axerror
enum AXError : int32_t {
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
};

// https://developer.apple.com/documentation/applicationservices/1460720-axisprocesstrusted
Boolean AXIsProcessTrusted(void);
// https://developer.apple.com/documentation/applicationservices/1460085-axuielementgettypeid
CFTypeID AXUIElementGetTypeID(void);
// https://developer.apple.com/documentation/applicationservices/1459374-axuielementcreateapplication
// The caller owns the element.
AXUIElementRef AXUIElementCreateApplication(pid_t pid) __attribute__((cf_returns_retained));
// https://developer.apple.com/documentation/applicationservices/1462085-axuielementcopyattributevalue
// The caller owns the value.
AXError AXUIElementCopyAttributeValue(
    AXUIElementRef element, CFStringRef attribute, CFTypeRef *value __attribute__((cf_returns_retained)));
// https://developer.apple.com/documentation/applicationservices/1459345-axuielementsetmessagingtimeout
// In seconds, for that very object and not for those equal to it.
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float timeoutInSeconds);

} // extern "C"
