#pragma once

#include "platform/InstanceClaim.h"

#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// A selection of the X server, which one client at a time can own: whatever name the display goes by, and whichever
/// folder the settings lie in.
class X11InstanceClaim final : public InstanceClaim {
public:
    explicit X11InstanceClaim(const XConnection &connection);
    ~X11InstanceClaim() override;

    [[nodiscard]] bool take() override;

private:
    const XConnection &m_connection;
    /// Owns the selection, and is never shown.
    xcb_window_t m_window;
};

} // namespace moorline
