#include "platform/linux/x11/FocusLoan.h"

#include "platform/linux/x11/XConnection.h"

namespace moorline {

namespace {

XReply<xcb_get_input_focus_reply_t> currentFocus(xcb_connection_t *connection)
{
    return XReply<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

} // namespace

FocusLoan::FocusLoan(XConnection &connection, xcb_window_t borrower)
    : m_connection(connection)
    , m_borrower(borrower)
    , m_takenAt(connection.serverTime())
{
    if (const auto focus = currentFocus(connection.native())) {
        m_owner = focus->focus;
        m_revertTo = focus->revert_to;
    }
    xcb_set_input_focus(connection.native(), XCB_INPUT_FOCUS_POINTER_ROOT, borrower, m_takenAt);
    xcb_flush(connection.native());
}

FocusLoan::~FocusLoan()
{
    const auto current = currentFocus(m_connection.native());
    if (!current || current->focus != m_borrower)
        return;
    // With the time at which it was taken, the server itself refuses this when somebody takes the focus just now: the
    // click that closes a menu may give it to another window at the same moment.
    xcb_set_input_focus(m_connection.native(), m_revertTo, m_owner, m_takenAt);
    // What this program asks for by way of Qt has to come after it.
    const auto done = currentFocus(m_connection.native());
}

} // namespace moorline
