#import "platform/macos/MoorlinePopUpMenu.h"

#import "platform/macos/ButtonRelease.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/MenuItems.h"

#include <utility>

using namespace moorline;

@implementation MoorlinePopUpMenu {
    NSMenu *_menu;
    /// Of the button that the menu was asked for with; nil where it was asked for without.
    NSEvent *_release;
    PopupWindows::MenuPlacement _placement;
    PopupWindows::Closed _closed;
    std::function<void()> _chosen;
    BOOL _waitsForChoice;
}

- (instancetype)initWithItems:(const Menu &)items
                    placement:(PopupWindows::MenuPlacement)placement
                       closed:(PopupWindows::Closed)closed
{
    self = [super init];
    _menu = [[NSMenu alloc] initWithTitle:@""];
    _release = releaseAfter(NSApp.currentEvent);
    _placement = std::move(placement);
    _closed = std::move(closed);
    __weak MoorlinePopUpMenu *menu = self;
    fill(_menu, items, [menu](const std::function<void()> &action) { [menu take:action]; });
    return self;
}

- (void)openSoon
{
    [self performSelector:@selector(open) withObject:nil afterDelay:0];
}

- (void)cancel
{
    [NSObject cancelPreviousPerformRequestsWithTarget:self];
    _closed = nullptr;
    [_menu cancelTrackingWithoutAnimation];
}

- (void)open
{
    const NSSize size = _menu.size;
    const QPointF place = _placement({size.width, size.height});
    const BOOL isChosen = [_menu popUpMenuPositioningItem:nil atLocation:NSMakePoint(place.x(), place.y()) inView:nil];
    [self releaseButton];
    // What is chosen may be told a turn later.
    _waitsForChoice = isChosen && !_chosen;
    if (!_waitsForChoice)
        [self finishSoon];
}

- (void)releaseButton
{
    if (_release)
        [NSApp postEvent:_release atStart:NO];
}

- (void)take:(const std::function<void()> &)action
{
    _chosen = action;
    if (_waitsForChoice)
        [self finishSoon];
}

- (void)finishSoon
{
    [self performSelector:@selector(finish) withObject:nil afterDelay:0];
}

/// Who is told that it is closed lets go of it.
- (void)finish
{
    const PopupWindows::Closed closed = std::exchange(_closed, nullptr);
    const std::function<void()> chosen = std::exchange(_chosen, nullptr);
    if (!closed)
        return;
    closed();
    if (chosen)
        chosen();
}

@end
