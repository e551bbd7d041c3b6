#pragma once

#include <QCoroTask>

namespace moorline {

/// The two things that Moorline changes about the desktop's own dock. Both answer whether it worked and never block.
class SystemDockControl {
public:
    virtual ~SystemDockControl() = default;

    [[nodiscard]] virtual QCoro::Task<bool> enableAutoHide() = 0;
    /// How long the pointer has to rest before the dock is revealed.
    [[nodiscard]] virtual QCoro::Task<bool> setRevealDelay(double seconds) = 0;
};

} // namespace moorline
