#pragma once

#import <Foundation/Foundation.h>

#include <QtGlobal>
#include <functional>

namespace moorline {

/// Calls back on the main thread for each notification of one name, until destroyed.
class NotificationObserver final {
public:
    using Callback = std::function<void(NSNotification *notification)>;

    NotificationObserver(NSNotificationCenter *center, NSNotificationName name, std::function<void()> callback);
    NotificationObserver(NSNotificationCenter *center, NSNotificationName name, Callback callback);
    ~NotificationObserver();
    Q_DISABLE_COPY_MOVE(NotificationObserver)

private:
    NSNotificationCenter *const m_center;
    const id<NSObject> m_token;
};

} // namespace moorline
