#include "platform/linux/docks/DesktopDock.h"

#include "platform/linux/docks/DockWindows.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStandardPaths>
#include <algorithm>
#include <cmath>

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

std::optional<GSettingsGroup> openPlankDock()
{
    const auto plank = GSettingsGroup::open("net.launchpad.plank");
    const QStringList docks = plank ? plank->texts("enabled-docks").value_or(QStringList()) : QStringList();
    if (docks.isEmpty())
        return std::nullopt;
    return GSettingsGroup::open("net.launchpad.plank.dock.settings", plankDockPaths + docks.first().toUtf8() + '/');
}

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

bool isPlank(const DockWindow &window)
{
    return window.windowClass.compare(QLatin1StringView("plank"), Qt::CaseInsensitive) == 0;
}

/// In device pixels from the top left of the root window. Qt scales a screen's size but not its place.
QRect primaryScreenFrame()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen == nullptr
        ? QRect()
        : QRect(screen->geometry().topLeft(), screen->geometry().size() * screen->devicePixelRatio());
}

/// What a panel takes from one edge. The strut alone says too much where a screen ends before the root window does, the
/// frame alone where a window is larger than what is drawn in it.
int reservedLength(int strut, int frameLength)
{
    return std::min(strut, frameLength);
}

/// A panel that hides may reserve the strip by which it is called back.
constexpr int callBackStrip = 8;

bool isTuckedAway(const DockWindow &window)
{
    const int length = std::max({reservedLength(window.strut.bottom(), window.frame.height()),
        reservedLength(window.strut.left(), window.frame.width()),
        reservedLength(window.strut.right(), window.frame.width())});
    return length > 0 && length <= callBackStrip;
}

bool isInTheWay(const DesktopDock::State &dock)
{
    return dock.edge == DesktopDock::Edge::bottom && !dock.hides;
}

} // namespace

QStringList currentDesktopNames()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

DesktopDock::DesktopDock(const DockWindows *windows, const QStringList &desktopNames)
    : m_windows(windows)
    , m_plankDock(openPlankDock())
{
    if (!desktopNames.contains(QStringLiteral("GNOME"), Qt::CaseInsensitive))
        return;
    m_hasDockBySession = desktopNames.contains(QStringLiteral("ubuntu"), Qt::CaseInsensitive);
    m_shell = GSettingsGroup::open("org.gnome.shell");
    m_gnomeDock = GSettingsGroup::open("org.gnome.shell.extensions.dash-to-dock", {}, extensionSchemas());
}

DesktopDock::State DesktopDock::state() const
{
    auto dock = gnomeDock();
    if (!dock)
        dock = plankDock();
    if (dock && isInTheWay(*dock))
        return *dock;
    const auto otherPanel = panel();
    if (otherPanel && (!dock || isInTheWay(*otherPanel)))
        return *otherPanel;
    return dock.value_or(State());
}

bool DesktopDock::enableAutoHide()
{
    switch (state().kind) {
    case Kind::gnome:
        return m_gnomeDock->setBoolean("dock-fixed", false) && m_gnomeDock->setBoolean("autohide", true);
    case Kind::plank:
        // Its other modes hide it only from windows, so it would stay where the bar is on an empty desktop.
        return m_plankDock->setText("hide-mode", QStringLiteral("auto"));
    case Kind::panel:
    case Kind::none:
        return false;
    }
    Q_UNREACHABLE();
}

bool DesktopDock::setRevealDelay(double seconds)
{
    if (!std::isfinite(seconds) || seconds < 0)
        return false;
    if (gnomeDock())
        return m_gnomeDock->setNumber("show-delay", seconds);
    if (plankDock())
        return m_plankDock->setNumber("unhide-delay", seconds * 1000);
    return false;
}

bool DesktopDock::isGnomeDockEnabled() const
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

std::optional<DesktopDock::State> DesktopDock::gnomeDock() const
{
    if (!m_gnomeDock || !isGnomeDockEnabled())
        return std::nullopt;
    const bool isFixed = m_gnomeDock->boolean("dock-fixed").value_or(false);
    const bool dodges =
        m_gnomeDock->boolean("autohide").value_or(false) || m_gnomeDock->boolean("intellihide").value_or(false);
    return State{
        .kind = Kind::gnome,
        .edge = edgeNamed(m_gnomeDock->text("dock-position")),
        .hides = !isFixed && dodges,
        .revealDelay = m_gnomeDock->number("show-delay"),
    };
}

std::optional<DesktopDock::State> DesktopDock::plankDock() const
{
    if (!m_plankDock || !isPlankRunning())
        return std::nullopt;
    State state{.kind = Kind::plank, .program = QStringLiteral("plank")};
    state.edge = edgeNamed(m_plankDock->text("position"));
    state.hides = m_plankDock->text("hide-mode") != QLatin1StringView("none");
    if (const auto milliseconds = m_plankDock->number("unhide-delay"))
        state.revealDelay = *milliseconds / 1000;
    return state;
}

bool DesktopDock::isPlankRunning() const
{
    const auto windows = m_windows == nullptr ? QList<DockWindow>() : m_windows->windows();
    return std::any_of(windows.begin(), windows.end(), isPlank);
}

std::optional<DesktopDock::State> DesktopDock::panel() const
{
    std::optional<State> found;
    const auto panels = otherPanels();
    rememberHidingPanels(panels);
    for (const DockWindow &window : panels) {
        const auto edge = reservedEdge(window);
        if (!edge || (found && *edge != Edge::bottom))
            continue;
        found = State{.kind = Kind::panel, .edge = *edge, .hides = false, .program = window.windowClass.toLower()};
        if (*edge == Edge::bottom)
            break;
    }
    return found;
}

std::optional<DesktopDock::Edge> DesktopDock::reservedEdge(const DockWindow &window) const
{
    if (m_hidingPanels.contains(window.window) || !window.frame.intersects(primaryScreenFrame()))
        return std::nullopt;
    if (reservedLength(window.strut.bottom(), window.frame.height()) > callBackStrip)
        return Edge::bottom;
    if (reservedLength(window.strut.left(), window.frame.width()) > callBackStrip)
        return Edge::left;
    if (reservedLength(window.strut.right(), window.frame.width()) > callBackStrip)
        return Edge::right;
    return std::nullopt;
}

QList<DockWindow> DesktopDock::otherPanels() const
{
    auto windows = m_windows == nullptr ? QList<DockWindow>() : m_windows->windows();
    if (m_plankDock)
        windows.removeIf(isPlank);
    return windows;
}

void DesktopDock::rememberHidingPanels(const QList<DockWindow> &panels) const
{
    QSet<xcb_window_t> hiding;
    for (const DockWindow &panel : panels) {
        if (isTuckedAway(panel) || m_hidingPanels.contains(panel.window))
            hiding.insert(panel.window);
    }
    m_hidingPanels = hiding;
}

} // namespace moorline
