#import "platform/macos/ButtonRelease.h"

#include <optional>

namespace moorline {

namespace {

std::optional<NSEventType> releaseTypeOf(NSEvent *event)
{
    switch (event.type) {
    case NSEventTypeLeftMouseDown:
        return NSEventTypeLeftMouseUp;
    case NSEventTypeRightMouseDown:
        return NSEventTypeRightMouseUp;
    default:
        return std::nullopt;
    }
}

} // namespace

NSEvent *releaseAfter(NSEvent *event)
{
    const auto type = event ? releaseTypeOf(event) : std::nullopt;
    if (!type)
        return nil;
    return [NSEvent mouseEventWithType:*type
                              location:event.locationInWindow
                         modifierFlags:event.modifierFlags
                             timestamp:event.timestamp
                          windowNumber:event.windowNumber
                               context:nil
                           eventNumber:event.eventNumber
                            clickCount:event.clickCount
                              pressure:0];
}

} // namespace moorline
