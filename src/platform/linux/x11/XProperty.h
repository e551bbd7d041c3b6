#pragma once

#include "platform/linux/x11/XReply.h"

#include <QByteArray>
#include <QList>
#include <optional>
#include <xcb/xcb.h>

namespace moorline {

/// The value of a window's property. Any program may write anything there, so a value of another type or format than
/// the asked one counts as none.
class XProperty final {
public:
    explicit XProperty(XReply<xcb_get_property_reply_t> reply);

    /// Empty unless the value is a list of `type`.
    [[nodiscard]] QList<std::uint32_t> values(xcb_atom_t type) const;
    /// The first of the values.
    [[nodiscard]] std::optional<std::uint32_t> value(xcb_atom_t type) const;
    /// The bytes of a text, in whichever of the usual encodings it is. Empty unless the value is one.
    [[nodiscard]] QByteArray bytes() const;

private:
    XReply<xcb_get_property_reply_t> m_reply;
};

/// A property that was asked for. Asking for many before reading the first costs one round trip.
class PendingProperty final {
public:
    /// What a property is read up to, in units of four bytes. Longer values are cut.
    static constexpr std::uint32_t maximumLength = 4096;

    PendingProperty(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t name);

    /// To be called exactly once.
    [[nodiscard]] XProperty read() const;

private:
    xcb_connection_t *m_connection;
    xcb_get_property_cookie_t m_cookie;
};

} // namespace moorline
