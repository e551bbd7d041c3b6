#include "platform/linux/x11/StartupMessages.h"

#include "platform/linux/x11/XConnection.h"

#include <algorithm>

namespace moorline {

namespace {

/// Of a client message in bytes.
constexpr qsizetype partLength = 20;

} // namespace

StartupMessages::StartupMessages(const XConnection &connection)
    : m_connection(connection)
    , m_window(xcb_generate_id(connection.native()))
{
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(connection.native(), XCB_COPY_FROM_PARENT, m_window, connection.root(), -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_COPY_FROM_PARENT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
}

StartupMessages::~StartupMessages()
{
    xcb_destroy_window(m_connection.native(), m_window);
    xcb_flush(m_connection.native());
}

void StartupMessages::send(const QByteArray &message) const
{
    // With the zero byte at its end.
    const QByteArray whole(message.constData(), message.size() + 1);
    const char *atom = "_NET_STARTUP_INFO_BEGIN";
    for (qsizetype sent = 0; sent < whole.size(); sent += partLength) {
        sendPart(atom, whole.mid(sent, partLength));
        atom = "_NET_STARTUP_INFO";
    }
    xcb_flush(m_connection.native());
}

void StartupMessages::sendPart(const char *atom, const QByteArray &part) const
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = m_window;
    event.type = m_connection.atom(QByteArray(atom));
    std::copy(part.begin(), part.end(), std::begin(event.data.data8));
    xcb_send_event(m_connection.native(), 0, m_connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE,
        reinterpret_cast<const char *>(&event));
}

} // namespace moorline
