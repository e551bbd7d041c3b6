#pragma once

#include "platform/SystemDockControl.h"

namespace moorline {

class DesktopDock;

/// Changes the desktop's own dock through its settings; a plain panel refuses.
class DesktopDockControl final : public SystemDockControl {
public:
    explicit DesktopDockControl(DesktopDock &dock);

    [[nodiscard]] QCoro::Task<bool> enableAutoHide() override;
    [[nodiscard]] QCoro::Task<bool> setRevealDelay(double seconds) override;

private:
    DesktopDock &m_dock;
};

} // namespace moorline
