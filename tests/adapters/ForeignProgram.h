#pragma once

#include "platform/linux/x11/XReply.h"

#include <QByteArray>
#include <QList>
#include <QMargins>
#include <QRect>
#include <QStringList>
#include <array>
#include <initializer_list>
#include <memory>
#include <optional>
#include <xcb/xcb.h>

namespace moorline::test {

/// What a window of the foreign program is created with.
struct WindowPlan {
    QRect frame{200, 150, 300, 200};
    QByteArray windowClass = QByteArrayLiteral("probe\0Probe\0");
    std::optional<std::uint32_t> process = std::nullopt;
    QByteArray type = {};
    QList<QByteArray> states = {};
    std::optional<QMargins> shadow = std::nullopt;
    xcb_window_t transientFor = XCB_WINDOW_NONE;
    bool bypassesManager = false;
    bool isDecorated = true;
};

/// Another program on the same X server, with windows and requests of its own, and a hand on mouse and pointer.
class ForeignProgram final {
public:
    ForeignProgram();

    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name) const;
    [[nodiscard]] QString atomName(xcb_atom_t atom) const;

    // Windows
    [[nodiscard]] xcb_window_t create(const WindowPlan &plan) const;
    /// Creates and maps.
    [[nodiscard]] xcb_window_t show(const WindowPlan &plan) const;
    void map(xcb_window_t window) const;
    void destroy(xcb_window_t window) const;
    void move(xcb_window_t window, const QPoint &position) const;
    void setInputRegion(xcb_window_t window, const QRect &rect) const;

    // Properties
    void setValues(
        xcb_window_t window, const QByteArray &name, const QByteArray &type, const QList<std::uint32_t> &values) const;
    void setBytes(xcb_window_t window, const QByteArray &name, const QByteArray &type, const QByteArray &bytes) const;
    [[nodiscard]] QList<std::uint32_t> values(xcb_window_t window, const QByteArray &name) const;
    [[nodiscard]] QList<QByteArray> atomNames(xcb_window_t window, const QByteArray &name) const;
    [[nodiscard]] QByteArray bytes(xcb_window_t window, const QByteArray &name) const;

    // Requests to the window manager
    void activate(xcb_window_t window) const;
    void iconify(xcb_window_t window) const;
    /// How often the window was asked to close so far. It stays.
    [[nodiscard]] qsizetype closeRequests(xcb_window_t window);
    void moveToDesktop(xcb_window_t window, std::uint32_t desktop) const;
    void switchToDesktop(std::uint32_t desktop) const;
    void setFullScreen(xcb_window_t window, bool isFullScreen) const;

    /// From here on it hears what others ask of window managers.
    void listenToRequests() const;
    /// What was asked so far: "type window first second third". The window is a number, or "root".
    [[nodiscard]] QStringList requests();

    // What the server says
    [[nodiscard]] bool hasWindowManager() const;
    [[nodiscard]] bool isViewable(xcb_window_t window) const;
    [[nodiscard]] bool isManaged(xcb_window_t window) const;
    [[nodiscard]] xcb_window_t activeWindow() const;
    [[nodiscard]] xcb_window_t focus() const;
    /// Without asking any window manager.
    void focus(xcb_window_t window) const;
    /// The child of the root window that holds `window`.
    [[nodiscard]] xcb_window_t frameOf(xcb_window_t window) const;
    [[nodiscard]] QRect geometry(xcb_window_t window) const;
    /// Whether the frame of `upper` is stacked over that of `lower`.
    [[nodiscard]] bool isAbove(xcb_window_t upper, xcb_window_t lower) const;
    [[nodiscard]] QRect shape(xcb_window_t window, std::uint8_t kind) const;

    // Mouse and keyboard
    void movePointer(const QPoint &position) const;
    void setButton(std::uint8_t button, bool isPressed) const;
    void click(const QPoint &position) const;
    /// How often a button was pressed over the window so far.
    [[nodiscard]] qsizetype clicks(xcb_window_t window);
    /// `key` as the server numbers them.
    void setKey(std::uint8_t key, bool isPressed) const;
    /// How many keys the window was told of so far.
    [[nodiscard]] qsizetype keys(xcb_window_t window);
    /// Until this program ends.
    void grabKeyboard() const;
    /// Until this program ends, where nothing is held beside.
    void grabKey(std::uint8_t key) const;

    void ownSelection(const QByteArray &selection, xcb_window_t window) const;
    /// Acts as a compositor, or ceases to.
    void setCompositing(bool isCompositing) const;

private:
    void send(xcb_window_t window, const QByteArray &type, std::initializer_list<std::uint32_t> data) const;
    void writePlan(xcb_window_t window, const WindowPlan &plan) const;
    void flush() const;
    void readEvents();
    void noteMessage(const xcb_client_message_event_t &message);

    struct Disconnecter {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    std::unique_ptr<xcb_connection_t, Disconnecter> m_connection;
    const xcb_screen_t *m_screen;
    QList<xcb_window_t> m_clicked;
    QList<xcb_window_t> m_typed;
    QList<xcb_window_t> m_closed;
    QStringList m_requests;
};

} // namespace moorline::test
