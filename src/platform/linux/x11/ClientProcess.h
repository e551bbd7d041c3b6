#pragma once

#include "platform/linux/x11/XProperty.h"

#include <xcb/res.h>

namespace moorline {

class XConnection;

/// The process behind a window, where it is one of this machine. It is asked of the server, which knows who is
/// connected: what a program says of itself is another number in a sandbox, and may be anything.
class PendingClientProcess final {
public:
    PendingClientProcess(const XConnection &connection, xcb_window_t window);

    /// To be called exactly once. `said` is what the window says of its process, which counts where the server does not
    /// know.
    [[nodiscard]] std::optional<qint64> read(const std::optional<qint64> &said) const;

private:
    const XConnection &m_connection;
    PendingProperty m_machine;
    std::optional<xcb_res_query_client_ids_cookie_t> m_ids;
};

/// Whether both name the same machine; one of them may be short for the other.
[[nodiscard]] bool isSameMachine(const QByteArray &one, const QByteArray &other);

} // namespace moorline
