#include "platform/linux/x11/XProperty.h"

#include <cstring>

namespace moorline {

XProperty::XProperty(XReply<xcb_get_property_reply_t> reply)
    : m_reply(std::move(reply))
{
}

QList<std::uint32_t> XProperty::values(xcb_atom_t type) const
{
    if (!m_reply || m_reply->type != type || m_reply->format != 32)
        return {};
    QList<std::uint32_t> values(static_cast<qsizetype>(m_reply->value_len));
    std::memcpy(values.data(), xcb_get_property_value(m_reply.get()), m_reply->value_len * sizeof(std::uint32_t));
    return values;
}

std::optional<std::uint32_t> XProperty::value(xcb_atom_t type) const
{
    const QList<std::uint32_t> all = values(type);
    return all.isEmpty() ? std::nullopt : std::optional(all.first());
}

QByteArray XProperty::bytes() const
{
    if (!m_reply || m_reply->format != 8)
        return {};
    return {
        static_cast<const char *>(xcb_get_property_value(m_reply.get())), static_cast<qsizetype>(m_reply->value_len)};
}

PendingProperty::PendingProperty(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t name)
    : m_connection(connection)
    , m_cookie(xcb_get_property(connection, false, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, maximumLength))
{
}

XProperty PendingProperty::read() const
{
    return XProperty(XReply<xcb_get_property_reply_t>(xcb_get_property_reply(m_connection, m_cookie, nullptr)));
}

} // namespace moorline
