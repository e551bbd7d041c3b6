#pragma once

#include "platform/SystemDockControl.h"

#include <QString>

namespace moorline {

class AppleScriptRunner;

/// macOS's Dock, changed from outside: auto-hide by a script to System Events, the delay by a preference and a restart.
class ScriptedSystemDockControl final : public SystemDockControl {
public:
    /// The programs that write a preference and that restart the Dock.
    struct Programs {
        QString defaults = QStringLiteral("/usr/bin/defaults");
        QString killall = QStringLiteral("/usr/bin/killall");
    };

    explicit ScriptedSystemDockControl(const AppleScriptRunner &scripts);
    ScriptedSystemDockControl(const AppleScriptRunner &scripts, Programs programs);

    [[nodiscard]] QCoro::Task<bool> enableAutoHide() override;
    [[nodiscard]] QCoro::Task<bool> setRevealDelay(double seconds) override;

private:
    const AppleScriptRunner &m_scripts;
    Programs m_programs;
};

} // namespace moorline
