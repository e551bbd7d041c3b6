#pragma once

#include "platform/SystemDockControl.h"

namespace moorline {

class DesktopDocks;

/// Changes that one of the desktop's own docks that concerns the bar, through its settings.
class DesktopDockControl final : public SystemDockControl {
public:
    explicit DesktopDockControl(DesktopDocks &docks);

    [[nodiscard]] QCoro::Task<bool> enableAutoHide() override;
    [[nodiscard]] QCoro::Task<bool> setRevealDelay(double seconds) override;

private:
    DesktopDocks &m_docks;
};

} // namespace moorline
