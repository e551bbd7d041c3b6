#pragma once

#include "platform/Network.h"

#import <Network/Network.h>

namespace moorline {

class MacNetwork final : public Network {
public:
    MacNetwork();
    ~MacNetwork() override;

    [[nodiscard]] bool isReachable() const override { return m_isReachable; }
    void listen() override { m_isListening = true; }
    [[nodiscard]] bool takeChanges() override;

private:
    void setReachable(bool reachable);

    const nw_path_monitor_t m_monitor;
    bool m_isReachable = true;
    /// The first report tells how things are, not that they changed.
    bool m_hasReport = false;
    bool m_isListening = false;
    bool m_hasChanged = false;
};

} // namespace moorline
