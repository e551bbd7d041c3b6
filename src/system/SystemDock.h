#pragma once

#include <QCoroTask>

namespace moorline {

class Preferences;
class Screens;
class SystemDockControl;
class SystemSettings;
class WindowServer;

/// The desktop's own dock: where it is, whether it is showing, and the two things that can be changed about it.
class SystemDock {
public:
    enum class Orientation { bottom, left, right };

    SystemDock(const Preferences &preferences, const WindowServer &windowServer, const Screens &screens,
        SystemDockControl &control, SystemSettings &settings);

    /// The bottom unless the dock says otherwise.
    [[nodiscard]] Orientation orientation() const;
    /// Whether the dock lies where the bar is: at the bottom and never hiding. A dock that cannot be asked does.
    [[nodiscard]] bool conflictsWithDockBar() const;
    /// Whether the dock is on screen now. One that never hides, or that cannot be asked, always is.
    [[nodiscard]] bool isRevealed() const;

    /// Makes the dock hide by itself; where that is refused, opens the settings pane in which the user can do it.
    QCoro::Task<> enableAutoHide();
    /// Answers whether the dock took the delay. One that is no time is refused at once.
    [[nodiscard]] QCoro::Task<bool> setAutoHideDelay(double seconds);

private:
    const Preferences &m_preferences;
    const WindowServer &m_windowServer;
    const Screens &m_screens;
    SystemDockControl &m_control;
    SystemSettings &m_settings;
};

} // namespace moorline
