#pragma once

#include "platform/SystemSettings.h"
#include "platform/linux/docks/DesktopDocks.h"

#include <functional>

namespace moorline {

/// A program with its arguments, to be looked for in PATH.
struct SettingsProgram {
    QString name;
    QStringList arguments = {};
    /// A desktop entry without which these arguments mean nothing to the program. Empty where there is no such entry.
    QString desktopEntry = {};

    bool operator==(const SettingsProgram &) const = default;
};

/// Where the user can change the dock: first the dock's own settings, then those of the desktop. `dockProgram` is the
/// dock's window class in lower case; empty for one that is no window, or none.
[[nodiscard]] QList<SettingsProgram> dockSettingsPrograms(const QString &dockProgram, const QStringList &desktopNames);

/// Where the user can say which programs may know where the machine is.
[[nodiscard]] QList<SettingsProgram> locationSettingsPrograms(const QStringList &desktopNames);

/// Starts the first of the desktop's settings programs that is installed.
class DesktopSettings final : public SystemSettings {
public:
    /// Starts a program by its path.
    using Start = std::function<void(const QString &program, const QStringList &arguments)>;

    DesktopSettings(const DesktopDocks &docks, Start start, const QStringList &desktopNames = currentDesktopNames());

    void open(SettingsPane pane) override;

private:
    [[nodiscard]] bool start(const SettingsProgram &program) const;
    [[nodiscard]] QString dockProgram() const;
    [[nodiscard]] QList<SettingsProgram> programs(SettingsPane pane) const;

    const DesktopDocks &m_docks;
    Start m_start;
    QStringList m_desktopNames;
};

} // namespace moorline
