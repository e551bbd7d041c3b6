#import "platform/macos/MoorlineDraggingSource.h"

#import "platform/macos/ButtonRelease.h"

@implementation MoorlineDraggingSource {
    std::function<void()> _ended;
    /// Of the button that the drag began with.
    NSEvent *_release;
    MoorlineDraggingSource *_self;
}

- (instancetype)initWithEnded:(std::function<void()>)ended
{
    self = [super init];
    _ended = std::move(ended);
    _release = moorline::releaseAfter(NSApp.currentEvent);
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
    if (_release)
        [NSApp postEvent:_release atStart:NO];
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
