#pragma once

#include <optional>

namespace moorline {

class WindowServer;
struct Screen;

/// Tells full-screen spaces from ordinary ones.
class SpaceProbe {
public:
    explicit SpaceProbe(const WindowServer &windowServer);

    /// What the window server says of the space on the primary screen; absent when it cannot tell.
    [[nodiscard]] std::optional<bool> isActiveSpaceFullScreen() const;
    /// A guess from the windows alone: one of them covers `screen` from edge to edge and no menu bar is showing.
    [[nodiscard]] bool looksFullScreen(const Screen &screen) const;

private:
    const WindowServer &m_windowServer;
};

} // namespace moorline
