#pragma once

#include "platform/Workspace.h"
#include "platform/linux/LogindSleep.h"

namespace moorline {

/// Where there is no X server: nothing is known but when the machine woke.
class NullWorkspace final : public Workspace {
    Q_OBJECT
public:
    explicit NullWorkspace(const SystemBus &bus)
        : m_sleep(bus)
    {
        connect(&m_sleep, &LogindSleep::didWake, this, &Workspace::didWake);
    }

private:
    LogindSleep m_sleep;
};

} // namespace moorline
