#import "platform/macos/MoorlineDraggingSource.h"

#import "platform/macos/ButtonRelease.h"

@implementation MoorlineDraggingSource {
    std::function<void()> _ended;
    NSEvent *_press;
    MoorlineDraggingSource *_self;
}

- (instancetype)initWithPress:(NSEvent *)press ended:(std::function<void()>)ended
{
    self = [super init];
    _ended = std::move(ended);
    _press = press;
    _self = self;
    return self;
}

- (NSDragOperation)draggingSession:(NSDraggingSession *)session
    sourceOperationMaskForDraggingContext:(NSDraggingContext)context
{
    if (context == NSDraggingContextWithinApplication)
        return NSDragOperationCopy;
    return NSDragOperationCopy | NSDragOperationLink | NSDragOperationGeneric;
}

- (void)draggingSession:(NSDraggingSession *)session
           endedAtPoint:(NSPoint)screenPoint
              operation:(NSDragOperation)operation
{
    // Whoever presses again while the picture goes back is not interrupted.
    if (NSEvent.pressedMouseButtons == 0)
        [NSApp postEvent:moorline::releaseAfter(_press) atStart:NO];
    [self finishSoon];
}

- (void)finishSoon
{
    [self performSelector:@selector(finish) withObject:nil afterDelay:0];
}

- (void)finish
{
    // Who performs this keeps it until it is done.
    _self = nil;
    _ended();
}

@end
