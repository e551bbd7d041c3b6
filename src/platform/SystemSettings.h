#pragma once

namespace moorline {

enum class SettingsPane { desktopAndDock, locationServices };

/// The system's own settings program.
class SystemSettings {
public:
    virtual ~SystemSettings() = default;

    /// Opens the pane, or what comes nearest on this desktop. Nothing happens where there is no such program.
    virtual void open(SettingsPane pane) = 0;
};

} // namespace moorline
