#include "platform/linux/x11/StackingOrder.h"

namespace moorline {

namespace {

template <typename Event>
const Event &as(const xcb_generic_event_t &event)
{
    return reinterpret_cast<const Event &>(event);
}

} // namespace

StackingOrder::StackingOrder(xcb_window_t root)
    : m_root(root)
{
}

void StackingOrder::reset(const QList<xcb_window_t> &children)
{
    m_windows = children;
}

bool StackingOrder::apply(const xcb_generic_event_t &event)
{
    switch (event.response_type) {
    case XCB_CREATE_NOTIFY: {
        const auto &created = as<xcb_create_notify_event_t>(event);
        return created.parent == m_root && !m_windows.contains(created.window) && placeOnTop(created.window);
    }
    case XCB_DESTROY_NOTIFY: {
        const auto &destroyed = as<xcb_destroy_notify_event_t>(event);
        return destroyed.event == m_root && remove(destroyed.window);
    }
    case XCB_REPARENT_NOTIFY: {
        const auto &reparented = as<xcb_reparent_notify_event_t>(event);
        if (reparented.event != m_root)
            return false;
        return reparented.parent == m_root ? placeOnTop(reparented.window) : remove(reparented.window);
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto &configured = as<xcb_configure_notify_event_t>(event);
        return configured.event == m_root && placeAbove(configured.window, configured.above_sibling);
    }
    case XCB_CIRCULATE_NOTIFY: {
        const auto &circulated = as<xcb_circulate_notify_event_t>(event);
        if (circulated.event != m_root)
            return false;
        return circulated.place == XCB_PLACE_ON_TOP ? placeOnTop(circulated.window)
                                                    : placeAbove(circulated.window, XCB_WINDOW_NONE);
    }
    default:
        return false;
    }
}

/// Without a sibling the window is the lowest.
bool StackingOrder::placeAbove(xcb_window_t window, xcb_window_t sibling)
{
    const qsizetype from = m_windows.indexOf(window);
    const bool isInPlace = from == 0 ? sibling == XCB_WINDOW_NONE : from > 0 && m_windows[from - 1] == sibling;
    // A window that is not listed was gone before the list was made, and its events still come.
    if (from < 0 || isInPlace)
        return false;
    m_windows.removeAt(from);
    m_windows.insert(m_windows.indexOf(sibling) + 1, window);
    return true;
}

bool StackingOrder::placeOnTop(xcb_window_t window)
{
    if (!m_windows.isEmpty() && m_windows.last() == window)
        return false;
    m_windows.removeOne(window);
    m_windows.append(window);
    return true;
}

bool StackingOrder::remove(xcb_window_t window)
{
    return m_windows.removeOne(window);
}

} // namespace moorline
