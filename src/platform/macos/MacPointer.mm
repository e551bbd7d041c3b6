#import "platform/macos/MacPointer.h"

#import <AppKit/AppKit.h>

namespace moorline {

QPointF MacPointer::location() const
{
    const NSPoint location = NSEvent.mouseLocation;
    return {location.x, location.y};
}

Qt::MouseButtons MacPointer::pressedButtons() const
{
    // AppKit and Qt number the buttons alike: left, right, middle, and then the others from the lowest bit upwards.
    return Qt::MouseButtons::fromInt(Qt::MouseButtons::Int(NSEvent.pressedMouseButtons) & Qt::MouseButtonMask);
}

} // namespace moorline
