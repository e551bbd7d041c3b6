#import "platform/macos/MacFileDrag.h"

#import "platform/macos/CFPointer.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/MoorlineDraggingSource.h"

#include <QWidget>

namespace moorline {

namespace {

constexpr CGFloat pictureSide = 48;
constexpr NSUInteger leftButton = 1 << 0;

/// Its icon where there is no picture yet: a frame without anything in it is refused.
NSImage *pictureOf(const CarriedFile &file, NSURL *url)
{
    const NSSize size = NSMakeSize(pictureSide, pictureSide);
    if (const CFPointer<CGImageRef> pixels{file.picture.toCGImage()})
        return [[NSImage alloc] initWithCGImage:pixels.get() size:size];
    NSImage *icon = [[NSWorkspace.sharedWorkspace iconForFile:url.path] copy];
    icon.size = size;
    return icon;
}

NSDraggingItem *itemFor(const CarriedFile &file, NSURL *url, const QPointF &middle)
{
    NSDraggingItem *item = [[NSDraggingItem alloc] initWithPasteboardWriter:url];
    QRectF frame(0, 0, pictureSide, pictureSide);
    frame.moveCenter(middle);
    [item setDraggingFrame:toCGRect(frame) contents:pictureOf(file, url)];
    return item;
}

/// A press of the left button. The event that the toolkit deals with now is not known to be the last that came.
NSEvent *pressIn(NSView *view, NSPoint place)
{
    return [NSEvent mouseEventWithType:NSEventTypeLeftMouseDown
                              location:[view convertPoint:place toView:nil]
                         modifierFlags:NSEvent.modifierFlags
                             timestamp:NSApp.currentEvent.timestamp
                          windowNumber:view.window.windowNumber
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:1];
}

} // namespace

void carryWithSession(QWidget &source, const QPointF &press, CarriedFile file, PopupWindows::Ended ended)
{
    NSURL *url = toNSURL(file.url);
    // Let go meanwhile.
    const bool isHeld = NSEvent.pressedMouseButtons & leftButton;
    if (!url || !isHeld) {
        ended();
        return;
    }
    // Its coordinates are those of the widget's window, from the top.
    NSView *view = (__bridge NSView *)reinterpret_cast<void *>(source.window()->winId());
    const QPointF place = source.mapTo(source.window(), press);
    NSEvent *pressed = pressIn(view, NSMakePoint(place.x(), place.y()));
    NSArray<NSDraggingItem *> *items = @[ itemFor(file, url, place) ];
    // What was prepared for the file lasts as long as the drag.
    auto end = [file = std::make_shared<CarriedFile>(std::move(file)), ended = std::move(ended)] { ended(); };
    MoorlineDraggingSource *draggingSource = [[MoorlineDraggingSource alloc] initWithPress:pressed
                                                                                     ended:std::move(end)];
    NSDraggingSession *session = [view beginDraggingSessionWithItems:items event:pressed source:draggingSource];
    if (!session)
        [draggingSource finishSoon];
    session.animatesToStartingPositionsOnCancelOrFail = YES;
}

} // namespace moorline
