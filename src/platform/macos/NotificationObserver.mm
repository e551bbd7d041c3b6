#import "platform/macos/NotificationObserver.h"

namespace moorline {

NotificationObserver::NotificationObserver(
    NSNotificationCenter *center, NSNotificationName name, std::function<void()> callback)
    : m_center(center)
    , m_token([center addObserverForName:name
                                  object:nil
                                   queue:NSOperationQueue.mainQueue
                              usingBlock:^(NSNotification *) { callback(); }])
{
}

NotificationObserver::~NotificationObserver()
{
    [m_center removeObserver:m_token];
}

} // namespace moorline
