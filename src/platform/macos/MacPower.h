#pragma once

#include "platform/Power.h"
#import "platform/macos/NotificationObserver.h"

namespace moorline {

class MacPower final : public Power {
public:
    MacPower();

private:
    NotificationObserver m_wakeObserver;
};

} // namespace moorline
