#pragma once

#include "platform/Screens.h"

#include <optional>

namespace moorline {

class WindowServer;

/// Tells full-screen spaces from ordinary ones.
class SpaceProbe {
public:
    explicit SpaceProbe(const WindowServer &windowServer);

    /// The best answer that this system allows: what it says of the space on `screen`, the primary one; what its
    /// windows say of themselves; or the guess. While there is no screen, only the first can be.
    [[nodiscard]] bool isFullScreen(const std::optional<Screen> &screen) const;

    /// What the window server says of the space on the primary screen; absent when it cannot tell.
    [[nodiscard]] std::optional<bool> isActiveSpaceFullScreen() const;
    /// A guess from the windows alone: one of them covers `screen` from edge to edge and no menu bar is showing.
    [[nodiscard]] bool looksFullScreen(const Screen &screen) const;

private:
    const WindowServer &m_windowServer;
};

} // namespace moorline
