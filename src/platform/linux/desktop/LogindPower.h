#pragma once

#include "platform/Power.h"
#include "platform/linux/bus/BusSignal.h"
#include "platform/linux/bus/FollowedName.h"

namespace moorline {

/// What logind tells of sleep, on the system bus. Silent where there is no such bus.
class LogindPower final : public Power {
    Q_OBJECT
public:
    /// Both outlive it.
    LogindPower(Bus &systemBus, Clock &clock);

private:
    void notePreparation(const QDBusMessage &message);

    FollowedName m_logind;
    BusSignal m_preparation;
};

} // namespace moorline
