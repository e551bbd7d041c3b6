#import "platform/macos/MoorlineStatusMenu.h"

@implementation MoorlineStatusMenu {
    std::function<void(NSMenu *)> _filling;
}

- (instancetype)initWithFilling:(std::function<void(NSMenu *)>)filling
{
    self = [super init];
    _filling = std::move(filling);
    return self;
}

- (void)menuNeedsUpdate:(NSMenu *)menu
{
    _filling(menu);
}

@end
