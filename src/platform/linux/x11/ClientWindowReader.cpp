#include "platform/linux/x11/ClientWindowReader.h"

#include "platform/linux/x11/PendingClientWindow.h"
#include "platform/linux/x11/XConnection.h"

#include <QHash>
#include <algorithm>
#include <vector>
#include <xcb/shape.h>

namespace moorline {

namespace {

// How deep window managers nest a window: in their frame, in a holder within it, and one to spare.
constexpr int maximumNesting = 4;

QList<xcb_window_t> withoutRepetition(const QList<std::uint32_t> &windows)
{
    QSet<xcb_window_t> seen{XCB_WINDOW_NONE};
    QList<xcb_window_t> unique;
    for (const xcb_window_t window : windows) {
        if (seen.contains(window))
            continue;
        seen.insert(window);
        unique.append(window);
    }
    return unique;
}

QList<xcb_window_t> childrenIn(const xcb_query_tree_reply_t &tree)
{
    const xcb_window_t *children = xcb_query_tree_children(&tree);
    return {children, children + xcb_query_tree_children_length(&tree)};
}

QRect boundingRect(xcb_shape_get_rectangles_reply_t *reply)
{
    QRect bounds;
    const xcb_rectangle_t *rectangles = xcb_shape_get_rectangles_rectangles(reply);
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply); ++i)
        bounds |= QRect(rectangles[i].x, rectangles[i].y, rectangles[i].width, rectangles[i].height);
    return bounds;
}

} // namespace

ClientWindowReader::ClientWindowReader(const XConnection &connection, QSet<xcb_window_t> &watched)
    : m_connection(connection)
    , m_watched(watched)
{
}

ClientSnapshot ClientWindowReader::read()
{
    ClientSnapshot snapshot;
    readRoot(snapshot);
    const Children children = classifyRootChildren();
    snapshot.windows =
        readWindows(snapshot.hasWindowManager() ? m_managed : children.ordinary, snapshot.hasWindowManager());
    snapshot.windows += readWindows(children.docks, false);
    readReachableFrames(snapshot.windows);
    findFrames(snapshot.windows);
    sortByStacking(snapshot.windows);
    return snapshot;
}

void ClientWindowReader::readRoot(ClientSnapshot &snapshot)
{
    const xcb_window_t root = m_connection.root();
    const PendingProperty check = m_connection.request(root, XAtom::netSupportingWmCheck);
    const PendingProperty stacking = m_connection.request(root, XAtom::netClientListStacking);
    const PendingProperty mapped = m_connection.request(root, XAtom::netClientList);
    const PendingProperty active = m_connection.request(root, XAtom::netActiveWindow);
    const PendingProperty desktop = m_connection.request(root, XAtom::netCurrentDesktop);
    const auto tree = xcb_query_tree(m_connection.native(), root);

    const xcb_window_t checkWindow = check.read().value(XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
    // Some window managers write the stacking only when it is next changed, so xfwm4 for the only window.
    const QList<std::uint32_t> stacked = stacking.read().values(XCB_ATOM_WINDOW);
    const QList<std::uint32_t> inOrder = mapped.read().values(XCB_ATOM_WINDOW);
    m_managed = withoutRepetition(stacked + inOrder);
    snapshot.mappingOrder = withoutRepetition(inOrder + stacked);
    snapshot.activeWindow = active.read().value(XCB_ATOM_WINDOW).value_or(XCB_WINDOW_NONE);
    snapshot.currentDesktop = desktop.read().value(XCB_ATOM_CARDINAL);
    if (const XReply<xcb_query_tree_reply_t> reply{xcb_query_tree_reply(m_connection.native(), tree, nullptr)})
        m_rootChildren = childrenIn(*reply);
    if (confirmsWindowManager(checkWindow))
        snapshot.windowManagerProof = checkWindow;
    else
        forgetManaged(snapshot);
}

void ClientWindowReader::forgetManaged(ClientSnapshot &snapshot)
{
    m_managed.clear();
    snapshot.mappingOrder.clear();
}

/// A window manager that died leaves its mark on the root window, but not the window that the mark names.
bool ClientWindowReader::confirmsWindowManager(xcb_window_t check) const
{
    return check != XCB_WINDOW_NONE
        && m_connection.property(check, XAtom::netSupportingWmCheck).value(XCB_ATOM_WINDOW) == check;
}

ClientWindowReader::Children ClientWindowReader::classifyRootChildren() const
{
    xcb_connection_t *native = m_connection.native();
    std::vector<std::pair<xcb_get_window_attributes_cookie_t, PendingProperty>> pending;
    for (const xcb_window_t window : m_rootChildren)
        pending.emplace_back(
            xcb_get_window_attributes(native, window), m_connection.request(window, XAtom::netWmWindowType));

    const QSet<xcb_window_t> managed(m_managed.begin(), m_managed.end());
    Children children;
    for (std::size_t i = 0; i < pending.size(); ++i) {
        const xcb_window_t window = m_rootChildren[static_cast<qsizetype>(i)];
        const XReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(native, pending[i].first, nullptr));
        const QList<std::uint32_t> types = pending[i].second.read().values(XCB_ATOM_ATOM);
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || managed.contains(window)
            || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT)
            continue;
        if (windowKind(m_connection, types) == WindowKind::dock)
            children.docks.append(window);
        else if (attributes->override_redirect == 0)
            children.ordinary.append(window);
    }
    return children;
}

QList<ClientWindow> ClientWindowReader::readWindows(const QList<xcb_window_t> &windows, bool areManaged)
{
    std::vector<PendingClientWindow> pending;
    pending.reserve(static_cast<std::size_t>(windows.size()));
    for (const xcb_window_t window : windows) {
        watchOnce(window);
        pending.emplace_back(m_connection, window);
    }
    QList<ClientWindow> read;
    for (const PendingClientWindow &one : pending) {
        if (auto window = one.read()) {
            window->isManaged = areManaged;
            read.append(*window);
        }
    }
    return read;
}

void ClientWindowReader::readReachableFrames(QList<ClientWindow> &windows) const
{
    xcb_connection_t *native = m_connection.native();
    for (ClientWindow &window : windows) {
        if (window.kind != WindowKind::dock)
            continue;
        const auto bounding = xcb_shape_get_rectangles(native, window.window, XCB_SHAPE_SK_BOUNDING);
        const auto input = xcb_shape_get_rectangles(native, window.window, XCB_SHAPE_SK_INPUT);
        const XReply<xcb_shape_get_rectangles_reply_t> visible(
            xcb_shape_get_rectangles_reply(native, bounding, nullptr));
        const XReply<xcb_shape_get_rectangles_reply_t> sensitive(
            xcb_shape_get_rectangles_reply(native, input, nullptr));
        if (visible && sensitive) {
            const QRect reachable = boundingRect(visible.get()) & boundingRect(sensitive.get());
            window.reachableFrame = reachable.translated(window.frame.topLeft()) & window.frame;
        }
    }
}

/// Climbs from every window at once, one level for each round trip.
void ClientWindowReader::findFrames(QList<ClientWindow> &windows) const
{
    for (ClientWindow &window : windows)
        window.frameWindow = window.window;
    const QSet<xcb_window_t> top(m_rootChildren.begin(), m_rootChildren.end());
    for (int level = 0; level < maximumNesting; ++level) {
        std::vector<std::pair<ClientWindow *, xcb_query_tree_cookie_t>> pending;
        for (ClientWindow &window : windows) {
            if (!top.contains(window.frameWindow))
                pending.emplace_back(&window, xcb_query_tree(m_connection.native(), window.frameWindow));
        }
        for (const auto &[window, cookie] : pending) {
            const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(m_connection.native(), cookie, nullptr));
            if (tree && tree->parent != m_connection.root() && tree->parent != XCB_WINDOW_NONE)
                window->frameWindow = tree->parent;
        }
    }
}

void ClientWindowReader::sortByStacking(QList<ClientWindow> &windows) const
{
    QHash<xcb_window_t, qsizetype> places;
    for (qsizetype place = 0; place < m_rootChildren.size(); ++place)
        places.insert(m_rootChildren[place], place);
    std::stable_sort(windows.begin(), windows.end(), [&](const ClientWindow &lower, const ClientWindow &upper) {
        return places.value(lower.frameWindow, -1) < places.value(upper.frameWindow, -1);
    });
}

void ClientWindowReader::watchOnce(xcb_window_t window)
{
    if (m_watched.contains(window))
        return;
    m_connection.watch(window);
    m_watched.insert(window);
}

} // namespace moorline
