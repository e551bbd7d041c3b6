#import "platform/macos/MoorlineMenuAction.h"

@implementation MoorlineMenuAction {
    std::function<void()> _action;
}

- (instancetype)initWithAction:(std::function<void()>)action
{
    self = [super init];
    _action = std::move(action);
    return self;
}

- (void)choose:(id)sender
{
    _action();
}

@end
