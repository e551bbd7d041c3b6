#import "platform/macos/MacFileDrag.h"

#import "platform/macos/CFPointer.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/MoorlineDraggingSource.h"

#include <QWidget>

namespace moorline {

namespace {

NSImage *nativeImage(const QImage &image)
{
    const CFPointer<CGImageRef> pixels(image.toCGImage());
    const QSizeF size = image.deviceIndependentSize();
    return pixels ? [[NSImage alloc] initWithCGImage:pixels.get() size:toCGRect(QRectF({}, size)).size] : nil;
}

NSDraggingItem *itemFor(const CarriedFile &file, NSURL *url, const QPointF &middle)
{
    NSDraggingItem *item = [[NSDraggingItem alloc] initWithPasteboardWriter:url];
    QRectF frame({}, file.picture.deviceIndependentSize());
    frame.moveCenter(middle);
    [item setDraggingFrame:toCGRect(frame) contents:nativeImage(file.picture)];
    return item;
}

/// The press that an event of the button follows from.
NSEvent *pressBefore(NSEvent *event, NSPoint locationInWindow)
{
    return [NSEvent mouseEventWithType:NSEventTypeLeftMouseDown
                              location:locationInWindow
                         modifierFlags:event.modifierFlags
                             timestamp:event.timestamp
                          windowNumber:event.windowNumber
                               context:nil
                           eventNumber:event.eventNumber
                            clickCount:event.clickCount
                              pressure:1];
}

} // namespace

void carryWithSession(QWidget &source, const QPointF &press, const CarriedFile &file, PopupWindows::Ended ended)
{
    NSURL *url = toNSURL(file.url);
    NSEvent *event = NSApp.currentEvent;
    if (!url || !event) {
        ended();
        return;
    }
    // Its coordinates are those of the widget's window, from the top.
    NSView *view = (__bridge NSView *)reinterpret_cast<void *>(source.window()->winId());
    const QPointF place = source.mapTo(source.window(), press);
    const NSPoint placeInPanel = [view convertPoint:NSMakePoint(place.x(), place.y()) toView:nil];
    MoorlineDraggingSource *asked = [[MoorlineDraggingSource alloc] initWithEnded:std::move(ended)];
    NSDraggingSession *session = [view beginDraggingSessionWithItems:@[ itemFor(file, url, place) ]
                                                               event:pressBefore(event, placeInPanel)
                                                              source:asked];
    if (!session)
        [asked finishSoon];
    session.animatesToStartingPositionsOnCancelOrFail = YES;
}

} // namespace moorline
