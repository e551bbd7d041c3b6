#pragma once

#include <QList>
#include <xcb/xcb.h>

namespace moorline {

/// The children of the root window as the X server stacks them, kept up to date from its events alone.
class StackingOrder final {
public:
    explicit StackingOrder(xcb_window_t root);

    /// Starts over from what the server lists, bottom to top.
    void reset(const QList<xcb_window_t> &children);
    /// Whether the order is another one now.
    bool apply(const xcb_generic_event_t &event);

    /// Bottom to top.
    [[nodiscard]] const QList<xcb_window_t> &windows() const { return m_windows; }

private:
    bool placeAbove(xcb_window_t window, xcb_window_t sibling);
    bool placeOnTop(xcb_window_t window);
    bool remove(xcb_window_t window);

    xcb_window_t m_root;
    QList<xcb_window_t> m_windows;
};

} // namespace moorline
