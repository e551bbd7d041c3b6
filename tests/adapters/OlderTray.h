#pragma once

#include "platform/linux/x11/XReply.h"

#include <QColor>
#include <QImage>
#include <QList>
#include <QRect>
#include <memory>
#include <xcb/xcb.h>

namespace moorline::test {

/// Another program that is the tray of the X server: a window of its own that takes in those which ask for it. It may
/// be one whose pixels can be transparent.
class OlderTray final {
public:
    enum class Kind { plain, transparent };

    explicit OlderTray(Kind kind, const QColor &background = Qt::darkBlue);

    /// Every window that has asked so far, in the order in which they did.
    [[nodiscard]] const QList<xcb_window_t> &asked();
    /// Takes a window in and shows it there.
    void take(xcb_window_t window, const QRect &frame) const;
    void resize(xcb_window_t window, const QRect &frame) const;

    [[nodiscard]] bool exists(xcb_window_t window) const;
    [[nodiscard]] std::uint8_t depth(xcb_window_t window) const;
    [[nodiscard]] QByteArray text(xcb_window_t window, const QByteArray &name) const;
    [[nodiscard]] QList<std::uint32_t> numbers(xcb_window_t window, const QByteArray &name) const;
    /// The window's pixels, premultiplied where they can be transparent.
    [[nodiscard]] QImage picture(xcb_window_t window) const;
    /// The window's frame on the screen.
    [[nodiscard]] QRect frame(xcb_window_t window) const;

private:
    struct Disconnecter {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] xcb_atom_t atom(const QByteArray &name) const;
    [[nodiscard]] xcb_visualid_t visualOf(std::uint8_t depth) const;
    void createWindow(Kind kind, const QColor &background);
    void sync() const;

    std::unique_ptr<xcb_connection_t, Disconnecter> m_connection;
    const xcb_screen_t *m_screen = nullptr;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    QList<xcb_window_t> m_asked;
};

} // namespace moorline::test
