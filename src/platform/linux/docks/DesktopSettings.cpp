#include "platform/linux/docks/DesktopSettings.h"

#include <QLoggingCategory>
#include <QStandardPaths>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logSettings, "moorline.desktop.settings", QtInfoMsg)

struct Choice {
    /// A window class, or a name from XDG_CURRENT_DESKTOP.
    QLatin1StringView of;
    QLatin1StringView program;
    /// Separated by spaces.
    QLatin1StringView arguments = {};
    QLatin1StringView desktopEntry = {};
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

/// Only GNOME and what is made from it have a page for it; the others begin at their overview.
constexpr Choice forLocation[] = {
    {QLatin1StringView("Budgie"), QLatin1StringView("budgie-control-center"), QLatin1StringView("location")},
    // A panel of its own in versions that bring an entry for it, a page of another panel in later ones.
    {QLatin1StringView("GNOME"), QLatin1StringView("gnome-control-center"), QLatin1StringView("location"),
        QLatin1StringView("gnome-location-panel.desktop")},
    {QLatin1StringView("GNOME"), QLatin1StringView("gnome-control-center"), QLatin1StringView("privacy location")},
    {QLatin1StringView("KDE"), QLatin1StringView("systemsettings")},
    {QLatin1StringView("KDE"), QLatin1StringView("systemsettings5")},
    {QLatin1StringView("XFCE"), QLatin1StringView("xfce4-settings-manager")},
    {QLatin1StringView("MATE"), QLatin1StringView("mate-control-center")},
    {QLatin1StringView("X-Cinnamon"), QLatin1StringView("cinnamon-settings")},
    {QLatin1StringView("LXQt"), QLatin1StringView("lxqt-config")},
};

SettingsProgram programOf(const Choice &choice)
{
    const QString arguments = choice.arguments;
    return {
        .name = choice.program,
        .arguments = arguments.split(u' ', Qt::SkipEmptyParts),
        .desktopEntry = choice.desktopEntry,
    };
}

void add(QList<SettingsProgram> &programs, const Choice &choice)
{
    if (const SettingsProgram program = programOf(choice); !programs.contains(program))
        programs.append(program);
}

bool isInstalled(const QString &desktopEntry)
{
    return !QStandardPaths::locate(QStandardPaths::ApplicationsLocation, desktopEntry).isEmpty();
}

} // namespace

QList<SettingsProgram> dockSettingsPrograms(const QString &dockProgram, const QStringList &desktopNames)
{
    QList<SettingsProgram> programs;
    for (const Choice &choice : byDockProgram) {
        if (dockProgram == choice.of)
            add(programs, choice);
    }
    for (const Choice &choice : byDesktop) {
        if (desktopNames.contains(choice.of, Qt::CaseInsensitive))
            add(programs, choice);
    }
    return programs;
}

QList<SettingsProgram> locationSettingsPrograms(const QStringList &desktopNames)
{
    QList<SettingsProgram> programs;
    for (const Choice &choice : forLocation) {
        if (desktopNames.contains(choice.of, Qt::CaseInsensitive))
            add(programs, choice);
    }
    return programs;
}

DesktopSettings::DesktopSettings(const DesktopDocks &docks, Start start, const QStringList &desktopNames)
    : m_docks(docks)
    , m_start(std::move(start))
    , m_desktopNames(desktopNames)
{
}

void DesktopSettings::open(SettingsPane pane)
{
    const auto candidates = programs(pane);
    if (std::none_of(
            candidates.begin(), candidates.end(), [this](const SettingsProgram &program) { return start(program); }))
        qCDebug(logSettings) << "no settings program found for the desktop" << m_desktopNames;
}

bool DesktopSettings::start(const SettingsProgram &program) const
{
    const QString executable = QStandardPaths::findExecutable(program.name);
    if (executable.isEmpty() || (!program.desktopEntry.isEmpty() && !isInstalled(program.desktopEntry)))
        return false;
    m_start(executable, program.arguments);
    return true;
}

QString DesktopSettings::dockProgram() const
{
    const auto concerning = m_docks.concerningDock();
    return concerning ? concerning->dock.program : QString();
}

QList<SettingsProgram> DesktopSettings::programs(SettingsPane pane) const
{
    switch (pane) {
    case SettingsPane::desktopAndDock:
        return dockSettingsPrograms(dockProgram(), m_desktopNames);
    case SettingsPane::locationServices:
        return locationSettingsPrograms(m_desktopNames);
    }
    return {};
}

} // namespace moorline
