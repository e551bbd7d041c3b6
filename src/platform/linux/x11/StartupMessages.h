#pragma once

#include <QByteArray>
#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// Tells everybody on the desktop what is being started, in the words of the startup notification protocol.
class StartupMessages final {
public:
    /// `connection` outlives it.
    explicit StartupMessages(const XConnection &connection);
    ~StartupMessages();
    Q_DISABLE_COPY_MOVE(StartupMessages)

    void send(const QByteArray &message) const;

private:
    void sendPart(const char *atom, const QByteArray &part) const;

    const XConnection &m_connection;
    /// Never shown; the parts of a message are told from others' by whose they are.
    xcb_window_t m_window;
};

} // namespace moorline
