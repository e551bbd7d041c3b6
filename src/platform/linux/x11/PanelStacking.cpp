#include "platform/linux/x11/PanelStacking.h"

#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/XConnection.h"

#include <QSet>
#include <algorithm>
#include <array>
#include <chrono>

namespace moorline {

namespace {

// A program that raises itself whenever it is covered would never give in, and neither would the panel.
constexpr int maximumRestacks = 20;
constexpr std::chrono::milliseconds restackPeriod{1000};

} // namespace

PanelStacking::PanelStacking(XConnection &connection, ClientWindows &clients, Clock &clock)
    : m_connection(connection)
    , m_clients(clients)
    , m_order(connection.root())
    , m_clock(clock)
{
    xcb_connection_t *native = connection.native();
    if (const XReply<xcb_query_tree_reply_t> tree{
            xcb_query_tree_reply(native, xcb_query_tree(native, connection.root()), nullptr)}) {
        const xcb_window_t *children = xcb_query_tree_children(tree.get());
        m_order.reset({children, children + xcb_query_tree_children_length(tree.get())});
    }
    connect(&connection, &XConnection::structureChanged, this, &PanelStacking::noteStructure);
    connect(&connection, &XConnection::propertyChanged, this, &PanelStacking::noteProperty);
}

void PanelStacking::keepInPlace(xcb_window_t panel)
{
    m_panel = panel;
    // A new window is on top of all, of a screen locker as well.
    if (const xcb_window_t frame = highestManagedFrame(); frame != XCB_WINDOW_NONE)
        placeAbove(frame);
}

void PanelStacking::noteStructure(const xcb_generic_event_t &event)
{
    if (m_order.apply(event))
        scheduleCheck();
}

/// A frame is on the stack before the window manager says that there is a window in it.
void PanelStacking::noteProperty(xcb_window_t window, xcb_atom_t name)
{
    const bool isList =
        name == m_connection.atom(XAtom::netClientList) || name == m_connection.atom(XAtom::netClientListStacking);
    if (window == m_connection.root() && isList)
        scheduleCheck();
}

/// One check for all the events of a turn: window managers restack in bursts.
void PanelStacking::scheduleCheck()
{
    if (m_panel == XCB_WINDOW_NONE || m_isCheckScheduled)
        return;
    m_isCheckScheduled = true;
    QMetaObject::invokeMethod(this, &PanelStacking::check, Qt::QueuedConnection);
}

void PanelStacking::check()
{
    m_isCheckScheduled = false;
    const xcb_window_t frame = highestManagedFrame();
    const QList<xcb_window_t> &order = m_order.windows();
    const qsizetype panel = order.indexOf(m_panel);
    if (frame == XCB_WINDOW_NONE || panel < 0 || panel > order.indexOf(frame))
        return;
    if (mayRestack())
        placeAbove(frame);
    else
        m_retry = m_clock.after(restackPeriod, [this] { check(); });
}

xcb_window_t PanelStacking::highestManagedFrame()
{
    QSet<xcb_window_t> frames;
    for (const ClientWindow &window : m_clients.snapshot().windows) {
        if (window.isManaged)
            frames.insert(window.frameWindow);
    }
    const QList<xcb_window_t> &order = m_order.windows();
    const auto highest =
        std::find_if(order.rbegin(), order.rend(), [&](xcb_window_t window) { return frames.contains(window); });
    return highest == order.rend() ? xcb_window_t{XCB_WINDOW_NONE} : *highest;
}

void PanelStacking::placeAbove(xcb_window_t sibling)
{
    constexpr std::uint16_t mask = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
    const std::array<std::uint32_t, 2> values{sibling, XCB_STACK_MODE_ABOVE};
    xcb_configure_window(m_connection.native(), m_panel, mask, values.data());
    xcb_flush(m_connection.native());
}

bool PanelStacking::mayRestack()
{
    const std::chrono::milliseconds now = m_clock.uptime();
    if (m_restacks == 0 || now - m_firstRestackAt >= restackPeriod) {
        m_firstRestackAt = now;
        m_restacks = 0;
    }
    return ++m_restacks <= maximumRestacks;
}

} // namespace moorline
