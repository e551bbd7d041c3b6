#pragma once

#include <QList>
#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// One key, led to this program by XConnection::keyPressed() as long as this lives, whichever window has the keyboard.
/// Every other key goes where it went before. While another program holds on to the keyboard, this one does too.
class KeyGrab final {
public:
    KeyGrab(XConnection &connection, xcb_keysym_t symbol);
    ~KeyGrab();
    Q_DISABLE_COPY_MOVE(KeyGrab)

    /// The keys that mean the symbol.
    [[nodiscard]] const QList<xcb_keycode_t> &keys() const { return m_keys; }

private:
    XConnection &m_connection;
    QList<xcb_keycode_t> m_keys;
};

} // namespace moorline
