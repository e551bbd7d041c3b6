#include "platform/linux/docks/DesktopDocks.h"

#include "platform/linux/docks/DockWindows.h"
#include "platform/linux/x11/X11Coordinates.h"

#include <QStandardPaths>
#include <algorithm>

namespace moorline {

namespace {

constexpr char plankDockPaths[] = "/net/launchpad/plank/docks/";
const QLatin1StringView dashToDock("dash-to-dock@micxgx.gmail.com");
const QLatin1StringView ubuntuDock("ubuntu-dock@ubuntu.com");

/// An extension that the user installed brings its schemas in its own folder, where GSettings does not look.
QString extensionSchemas()
{
    for (const QLatin1StringView extension : {dashToDock, ubuntuDock}) {
        QString folder = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
            QStringLiteral("gnome-shell/extensions/%1/schemas").arg(extension), QStandardPaths::LocateDirectory);
        if (!folder.isEmpty())
            return folder;
    }
    return {};
}

std::vector<GSettingsGroup> openPlankDocks(const QStringList &names)
{
    std::vector<GSettingsGroup> docks;
    for (const QString &name : names) {
        const QByteArray path = plankDockPaths + name.toUtf8() + '/';
        if (auto dock = GSettingsGroup::open("net.launchpad.plank.dock.settings", path))
            docks.push_back(*std::move(dock));
    }
    return docks;
}

// The docks that have settings are no windows to the rule; any number does that no window has.
constexpr quint64 gnomeId = quint64(1) << 32U;
/// Of the first; those of the others follow.
constexpr quint64 plankId = gnomeId + 1;

/// GNOME's dock names its edges in capitals, Plank in small letters.
DesktopDock::Edge edgeNamed(const std::optional<QString> &name)
{
    const QString edge = name.value_or(QString()).toLower();
    if (edge == QLatin1StringView("left"))
        return DesktopDock::Edge::left;
    if (edge == QLatin1StringView("right"))
        return DesktopDock::Edge::right;
    if (edge == QLatin1StringView("top"))
        return DesktopDock::Edge::top;
    return DesktopDock::Edge::bottom;
}

/// All its other modes hide it from windows: from the active one, from any, or from those that fill the screen.
DesktopDock::Hiding plankHiding(const std::optional<QString> &mode)
{
    if (mode == QLatin1StringView("none"))
        return DesktopDock::Hiding::never;
    if (mode == QLatin1StringView("auto"))
        return DesktopDock::Hiding::byItself;
    return DesktopDock::Hiding::fromWindows;
}

bool isPlank(const DockWindow &window)
{
    return window.windowClass.compare(QLatin1StringView("plank"), Qt::CaseInsensitive) == 0;
}

/// The strut alone says too much where a screen ends before the root window does, the frame alone where a window is
/// larger than what is drawn in it.
DesktopDock panelFrom(const DockWindow &window, const X11Coordinates &coordinates)
{
    const auto reserved = [scale = coordinates.primaryScale()](
                              int strut, int frameLength) { return std::min(strut, frameLength) / scale; };
    const QSize size = window.frame.size();
    return {
        .kind = DesktopDock::Kind::panel,
        .id = window.window,
        .frame = coordinates.windowBoundsFromNative(window.frame),
        .reserved = {reserved(window.strut.left(), size.width()), reserved(window.strut.top(), size.height()),
            reserved(window.strut.right(), size.width()), reserved(window.strut.bottom(), size.height())},
        .program = window.windowClass.toLower(),
    };
}

} // namespace

QStringList currentDesktopNames()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

DesktopDocks::DesktopDocks(const DockWindows *windows, const QStringList &desktopNames)
    : m_windows(windows)
    , m_plank(GSettingsGroup::open("net.launchpad.plank"))
{
    if (!desktopNames.contains(QStringLiteral("GNOME"), Qt::CaseInsensitive))
        return;
    m_hasDockBySession = desktopNames.contains(QStringLiteral("ubuntu"), Qt::CaseInsensitive);
    m_shell = GSettingsGroup::open("org.gnome.shell");
    m_gnomeDock = GSettingsGroup::open("org.gnome.shell.extensions.dash-to-dock", {}, extensionSchemas());
}

QList<DesktopDock> DesktopDocks::docks() const
{
    QList<DesktopDock> docks;
    if (m_gnomeDock && isGnomeDockEnabled())
        docks.append(gnomeDock());
    auto windows = m_windows == nullptr ? QList<DockWindow>() : m_windows->windows();
    followPlanksNames();
    if (!m_plankDocks.empty()) {
        const auto others = std::stable_partition(windows.begin(), windows.end(), isPlank);
        docks += plankDocks({windows.begin(), others});
        windows.erase(windows.begin(), others);
    }
    const X11Coordinates coordinates = X11Coordinates::current();
    for (const DockWindow &window : std::as_const(windows))
        docks.append(panelFrom(window, coordinates));
    return docks;
}

std::optional<DesktopDockRule::Choice> DesktopDocks::concerningDock() const
{
    const X11Coordinates coordinates = X11Coordinates::current();
    return m_rule.choose(docks(), coordinates.windowBoundsFromNative(coordinates.nativePrimary()));
}

std::optional<DesktopDocks::PlankItems> DesktopDocks::plankItems(const DesktopDock &dock) const
{
    const quint64 index = dock.id - plankId;
    if (dock.kind != DesktopDock::Kind::plank || index >= m_plankDocks.size())
        return std::nullopt;
    return PlankItems{.dock = m_plankNames.value(qsizetype(index)),
        .files = m_plankDocks.at(index).texts("dock-items").value_or(QStringList())};
}

bool DesktopDocks::makeHide(const DesktopDock &dock)
{
    switch (dock.kind) {
    case DesktopDock::Kind::gnome:
        // While it dodges windows, it stays where there are none.
        return m_gnomeDock->setBoolean("dock-fixed", false) && m_gnomeDock->setBoolean("autohide", true)
            && m_gnomeDock->setBoolean("intellihide", false);
    case DesktopDock::Kind::plank:
        return m_plankDocks.at(dock.id - plankId).setText("hide-mode", QStringLiteral("auto"));
    case DesktopDock::Kind::panel:
        return false;
    }
    Q_UNREACHABLE();
}

bool DesktopDocks::setRevealDelay(const DesktopDock &dock, double seconds)
{
    switch (dock.kind) {
    case DesktopDock::Kind::gnome:
        return m_gnomeDock->setNumber("show-delay", seconds);
    case DesktopDock::Kind::plank:
        return m_plankDocks.at(dock.id - plankId).setNumber("unhide-delay", seconds * 1000);
    case DesktopDock::Kind::panel:
        return false;
    }
    Q_UNREACHABLE();
}

bool DesktopDocks::isGnomeDockEnabled() const
{
    if (!m_shell)
        return false;
    const QStringList disabled = m_shell->texts("disabled-extensions").value_or(QStringList());
    // Ubuntu's session brings its dock without listing it, and keeps it when the user's own extensions are off.
    if (m_hasDockBySession && !disabled.contains(ubuntuDock))
        return true;
    if (m_shell->boolean("disable-user-extensions").value_or(false))
        return false;
    const QStringList enabled = m_shell->texts("enabled-extensions").value_or(QStringList());
    const auto isEnabled = [&](QLatin1StringView dock) { return enabled.contains(dock) && !disabled.contains(dock); };
    return isEnabled(dashToDock) || isEnabled(ubuntuDock);
}

DesktopDock DesktopDocks::gnomeDock() const
{
    return {
        .kind = DesktopDock::Kind::gnome,
        .id = gnomeId,
        .edge = edgeNamed(m_gnomeDock->text("dock-position")),
        .hiding = gnomeHiding(),
        .revealDelay = m_gnomeDock->number("show-delay"),
    };
}

/// Fixed comes first, then dodging. What is neither hides, and without "autohide" only the overview brings it back.
DesktopDock::Hiding DesktopDocks::gnomeHiding() const
{
    if (m_gnomeDock->boolean("dock-fixed").value_or(false))
        return DesktopDock::Hiding::never;
    const bool dodges = m_gnomeDock->boolean("intellihide").value_or(false);
    return dodges ? DesktopDock::Hiding::fromWindows : DesktopDock::Hiding::byItself;
}

void DesktopDocks::followPlanksNames() const
{
    const QStringList names = m_plank ? m_plank->texts("enabled-docks").value_or(QStringList()) : QStringList();
    if (names == m_plankNames)
        return;
    m_plankNames = names;
    m_plankDocks = openPlankDocks(names);
}

QList<DesktopDock> DesktopDocks::plankDocks(const QList<DockWindow> &windows) const
{
    QList<DesktopDock> docks;
    if (windows.isEmpty())
        return docks;
    for (const GSettingsGroup &settings : m_plankDocks) {
        docks.append({
            .kind = DesktopDock::Kind::plank,
            .id = plankId + quint64(docks.size()),
            .edge = edgeNamed(settings.text("position")),
            .hiding = plankHiding(settings.text("hide-mode")),
            .program = QStringLiteral("plank"),
        });
        if (const auto milliseconds = settings.number("unhide-delay"))
            docks.last().revealDelay = *milliseconds / 1000;
    }
    // Of several, nothing tells which window is whose.
    if (docks.size() == 1 && windows.size() == 1)
        docks.first().frame = X11Coordinates::current().windowBoundsFromNative(windows.first().frame);
    return docks;
}

} // namespace moorline
