#import "platform/macos/NotificationObserver.h"

#include <utility>

namespace moorline {

NotificationObserver::NotificationObserver(
    NSNotificationCenter *center, NSNotificationName name, std::function<void()> callback)
    : NotificationObserver(center, name, [callback = std::move(callback)](NSNotification *) { callback(); })
{
}

NotificationObserver::NotificationObserver(NSNotificationCenter *center, NSNotificationName name, Callback callback)
    : m_center(center)
    , m_token([center addObserverForName:name
                                  object:nil
                                   queue:NSOperationQueue.mainQueue
                              usingBlock:^(NSNotification *notification) { callback(notification); }])
{
}

NotificationObserver::~NotificationObserver()
{
    [m_center removeObserver:m_token];
}

} // namespace moorline
