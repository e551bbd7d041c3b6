#include "platform/linux/x11/X11DropTransfer.h"

#include "platform/linux/x11/XConnection.h"

#include <utility>

namespace moorline {

namespace {

xcb_atom_t actionAtom(const XConnection &connection, Qt::DropAction action)
{
    switch (action) {
    case Qt::CopyAction:
        return connection.atom(XAtom::xdndActionCopy);
    case Qt::LinkAction:
        return connection.atom(XAtom::xdndActionLink);
    case Qt::MoveAction:
    case Qt::TargetMoveAction:
        return connection.atom(XAtom::xdndActionMove);
    case Qt::IgnoreAction:
    case Qt::ActionMask:
        break;
    }
    return XCB_ATOM_NONE;
}

} // namespace

X11DropTransfer::X11DropTransfer(XConnection &connection, Clock &clock, const Ends &ends)
    : m_connection(connection)
    , m_clock(clock)
    , m_ends(ends)
{
}

X11DropTransfer::~X11DropTransfer()
{
    finish(Qt::IgnoreAction);
}

void X11DropTransfer::read(const QString &format, Received received)
{
    const SelectionReader::Question question{.selection = m_connection.atom(XAtom::xdndSelection),
        .target = m_connection.atom(format.toUtf8()),
        .time = m_ends.time,
        .source = m_ends.source};
    m_reader = std::make_unique<SelectionReader>(m_connection, m_clock, question, std::move(received));
}

void X11DropTransfer::finish(Qt::DropAction action)
{
    if (std::exchange(m_isFinished, true))
        return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_ends.source;
    message.type = m_connection.atom(XAtom::xdndFinished);
    message.data.data32[0] = m_ends.target;
    message.data.data32[1] = action == Qt::IgnoreAction ? 0 : 1;
    message.data.data32[2] = actionAtom(m_connection, action);
    xcb_send_event(
        m_connection.native(), false, m_ends.source, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection.native());
}

} // namespace moorline
