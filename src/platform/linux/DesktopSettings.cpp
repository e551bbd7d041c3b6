#include "platform/linux/DesktopSettings.h"

#include <QDir>
#include <QLoggingCategory>
#include <QProcess>
#include <QStandardPaths>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logSettings, "moorline.desktop.settings")

struct Choice {
    /// A window class, or a name from XDG_CURRENT_DESKTOP.
    QLatin1StringView of;
    QLatin1StringView program;
    QLatin1StringView argument = {};
};

constexpr QLatin1StringView preferences("--preferences");

constexpr Choice byDockProgram[] = {
    {QLatin1StringView("plank"), QLatin1StringView("plank"), preferences},
    {QLatin1StringView("tint2"), QLatin1StringView("tint2conf")},
    {QLatin1StringView("xfce4-panel"), QLatin1StringView("xfce4-panel"), preferences},
};

/// In order of preference, because a desktop that is made from another also carries its name.
constexpr Choice byDesktop[] = {
    {QLatin1StringView("ubuntu"), QLatin1StringView("gnome-control-center"), QLatin1StringView("ubuntu")},
    {QLatin1StringView("Budgie"), QLatin1StringView("budgie-desktop-settings")},
    {QLatin1StringView("GNOME"), QLatin1StringView("gnome-control-center")},
    {QLatin1StringView("KDE"), QLatin1StringView("systemsettings")},
    {QLatin1StringView("KDE"), QLatin1StringView("systemsettings5")},
    {QLatin1StringView("XFCE"), QLatin1StringView("xfce4-panel"), preferences},
    {QLatin1StringView("XFCE"), QLatin1StringView("xfce4-settings-manager")},
    {QLatin1StringView("MATE"), QLatin1StringView("mate-control-center")},
    {QLatin1StringView("X-Cinnamon"), QLatin1StringView("cinnamon-settings"), QLatin1StringView("panel")},
    {QLatin1StringView("LXQt"), QLatin1StringView("lxqt-config")},
    {QLatin1StringView("LXDE"), QLatin1StringView("lxpanelctl"), QLatin1StringView("config")},
};

SettingsProgram programOf(const Choice &choice)
{
    SettingsProgram program{choice.program};
    if (!choice.argument.isEmpty())
        program.arguments.append(choice.argument);
    return program;
}

bool start(const SettingsProgram &program)
{
    const QString executable = QStandardPaths::findExecutable(program.name);
    if (executable.isEmpty())
        return false;
    return QProcess::startDetached(executable, program.arguments, QDir::homePath());
}

} // namespace

QList<SettingsProgram> dockSettingsPrograms(const DesktopDock::State &dock, const QStringList &desktopNames)
{
    QList<SettingsProgram> programs;
    const auto add = [&programs](const Choice &choice) {
        if (const SettingsProgram program = programOf(choice); !programs.contains(program))
            programs.append(program);
    };
    for (const Choice &choice : byDockProgram) {
        if (dock.program == choice.of)
            add(choice);
    }
    for (const Choice &choice : byDesktop) {
        if (desktopNames.contains(choice.of, Qt::CaseInsensitive))
            add(choice);
    }
    return programs;
}

DesktopSettings::DesktopSettings(const DesktopDock &dock, const QStringList &desktopNames)
    : m_dock(dock)
    , m_desktopNames(desktopNames)
{
}

void DesktopSettings::open(SettingsPane pane)
{
    switch (pane) {
    case SettingsPane::desktopAndDock: {
        const auto programs = dockSettingsPrograms(m_dock.state(), m_desktopNames);
        if (std::none_of(programs.begin(), programs.end(), start))
            qCDebug(logSettings) << "no settings program found for the desktop" << m_desktopNames;
        return;
    }
    }
}

} // namespace moorline
