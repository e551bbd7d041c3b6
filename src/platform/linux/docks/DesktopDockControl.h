#pragma once

#include "platform/SystemDockControl.h"

namespace moorline {

class DesktopDocks;

/// Changes the desktop's own docks through their settings: makes the one that concerns the bar hide, and gives the
/// delay to the first that has one.
class DesktopDockControl final : public SystemDockControl {
public:
    explicit DesktopDockControl(DesktopDocks &docks);

    [[nodiscard]] QCoro::Task<bool> enableAutoHide() override;
    [[nodiscard]] QCoro::Task<bool> setRevealDelay(double seconds) override;

private:
    DesktopDocks &m_docks;
};

} // namespace moorline
