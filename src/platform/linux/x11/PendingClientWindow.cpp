#include "platform/linux/x11/PendingClientWindow.h"

#include "platform/linux/x11/XConnection.h"

#include <algorithm>
#include <array>
#include <utility>

namespace moorline {

namespace {

// No window and no coordinate on an X server is larger.
constexpr std::uint32_t maximumLength = 32767;
constexpr std::uint32_t allDesktops = 0xFFFFFFFF;

/// From the order of the frame extents and struts: left, right, top, bottom. Empty when the values make no sense.
QMargins marginsFrom(const QList<std::uint32_t> &values)
{
    if (values.size() < 4)
        return {};
    const bool isSound =
        std::all_of(values.begin(), values.begin() + 4, [](auto value) { return value <= maximumLength; });
    if (!isSound)
        return {};
    return {static_cast<int>(values[0]), static_cast<int>(values[2]), static_cast<int>(values[1]),
        static_cast<int>(values[3])};
}

/// WM_CLASS holds the instance and the class, each ended by a zero byte.
QString classPart(const QByteArray &instanceAndClass, int part)
{
    return QString::fromUtf8(instanceAndClass.split('\0').value(part));
}

} // namespace

std::optional<WindowKind> windowKind(const XConnection &connection, const QList<std::uint32_t> &types)
{
    constexpr std::array<std::pair<XAtom, WindowKind>, 5> kinds{{
        {XAtom::netWmWindowTypeDesktop, WindowKind::desktop},
        {XAtom::netWmWindowTypeDock, WindowKind::dock},
        {XAtom::netWmWindowTypeNormal, WindowKind::normal},
        {XAtom::netWmWindowTypeDialog, WindowKind::dialog},
        {XAtom::netWmWindowTypeUtility, WindowKind::utility},
    }};
    if (types.isEmpty())
        return std::nullopt;
    // In the program's order of preference, in which the first that is known counts.
    for (const std::uint32_t type : types) {
        for (const auto &[atom, kind] : kinds) {
            if (type == connection.atom(atom))
                return kind;
        }
    }
    return WindowKind::other;
}

PendingClientWindow::PendingClientWindow(const XConnection &connection, xcb_window_t window)
    : m_connection(connection)
    , m_window(window)
    , m_attributes(xcb_get_window_attributes(connection.native(), window))
    , m_geometry(xcb_get_geometry(connection.native(), window))
    , m_position(xcb_translate_coordinates(connection.native(), window, connection.root(), 0, 0))
    , m_type(connection.request(window, XAtom::netWmWindowType))
    , m_state(connection.request(window, XAtom::netWmState))
    , m_desktop(connection.request(window, XAtom::netWmDesktop))
    , m_transientFor(connection.request(window, XCB_ATOM_WM_TRANSIENT_FOR))
    , m_class(connection.request(window, XCB_ATOM_WM_CLASS))
    , m_applicationId(connection.request(window, XAtom::gtkApplicationId))
    , m_process(connection.request(window, XAtom::netWmPid))
    , m_localProcess(connection, window)
    , m_frameExtents(connection.request(window, XAtom::netFrameExtents))
    , m_shadowExtents(connection.request(window, XAtom::gtkFrameExtents))
    , m_strutPartial(connection.request(window, XAtom::netWmStrutPartial))
    , m_strut(connection.request(window, XAtom::netWmStrut))
{
}

std::optional<ClientWindow> PendingClientWindow::read() const
{
    ClientWindow window;
    window.window = m_window;
    // Every answer is taken off the connection, also for a window that turns out to be gone.
    const bool isThere = readPlace(window);
    readStates(window);
    readKind(window);
    readOwner(window);
    readStrut(window);
    return isThere ? std::optional(window) : std::nullopt;
}

void PendingClientWindow::readKind(ClientWindow &window) const
{
    const WindowKind unsaid = window.transientFor == XCB_WINDOW_NONE ? WindowKind::normal : WindowKind::dialog;
    window.kind = windowKind(m_connection, m_type.read().values(XCB_ATOM_ATOM)).value_or(unsaid);
}

void PendingClientWindow::readStates(ClientWindow &window) const
{
    const QList<std::uint32_t> states = m_state.read().values(XCB_ATOM_ATOM);
    window.isFullScreen = states.contains(m_connection.atom(XAtom::netWmStateFullscreen));
    window.isHidden = states.contains(m_connection.atom(XAtom::netWmStateHidden));
    window.skipsTaskbar = states.contains(m_connection.atom(XAtom::netWmStateSkipTaskbar));
    window.isAbove = states.contains(m_connection.atom(XAtom::netWmStateAbove));
    window.desktop = m_desktop.read().value(XCB_ATOM_CARDINAL);
    if (window.desktop == allDesktops)
        window.desktop.reset();
    window.transientFor = m_transientFor.read().value(XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
}

void PendingClientWindow::readOwner(ClientWindow &window) const
{
    const QByteArray instanceAndClass = m_class.read().bytes();
    window.windowInstance = classPart(instanceAndClass, 0);
    window.windowClass = classPart(instanceAndClass, 1);
    window.applicationId = QString::fromUtf8(m_applicationId.read().bytes());
    const std::uint32_t process = m_process.read().value(XCB_ATOM_CARDINAL).value_or(0);
    if (process != 0)
        window.process = process;
    window.localProcess = m_localProcess.read(window.process);
}

void PendingClientWindow::readStrut(ClientWindow &window) const
{
    const QMargins partial = marginsFrom(m_strutPartial.read().values(XCB_ATOM_CARDINAL));
    const QMargins whole = marginsFrom(m_strut.read().values(XCB_ATOM_CARDINAL));
    window.strut = partial.isNull() ? whole : partial;
}

bool PendingClientWindow::readPlace(ClientWindow &window) const
{
    xcb_connection_t *native = m_connection.native();
    const XReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(native, m_attributes, nullptr));
    const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(native, m_geometry, nullptr));
    const XReply<xcb_translate_coordinates_reply_t> position(
        xcb_translate_coordinates_reply(native, m_position, nullptr));
    const QMargins decoration = marginsFrom(m_frameExtents.read().values(XCB_ATOM_CARDINAL));
    const QMargins shadow = marginsFrom(m_shadowExtents.read().values(XCB_ATOM_CARDINAL));
    if (!attributes || !geometry || !position)
        return false;
    window.isViewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    const QRect content(position->dst_x, position->dst_y, geometry->width, geometry->height);
    window.frame = content.marginsAdded(decoration);
    // A shadow wider than the window leaves nothing that could be one.
    if (const QRect withoutShadow = window.frame.marginsRemoved(shadow); withoutShadow.isValid())
        window.frame = withoutShadow;
    return true;
}

} // namespace moorline
