#pragma once

#include <QtGlobal>
#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// The keyboard focus, taken from the window that has it for as long as this lives. A window that bypasses the window
/// manager has to do both itself: no window manager gives it the focus, and only few give it back to somebody.
class FocusLoan final {
public:
    /// `borrower` has to be viewable.
    FocusLoan(XConnection &connection, xcb_window_t borrower);
    /// The focus is back when this returns, unless it went elsewhere in the meantime.
    ~FocusLoan();
    Q_DISABLE_COPY_MOVE(FocusLoan)

private:
    XConnection &m_connection;
    xcb_window_t m_borrower;
    /// A window, or one of the two words for none and for whichever is below the pointer.
    xcb_window_t m_owner = XCB_INPUT_FOCUS_POINTER_ROOT;
    std::uint8_t m_revertTo = XCB_INPUT_FOCUS_POINTER_ROOT;
    xcb_timestamp_t m_takenAt = XCB_CURRENT_TIME;
};

} // namespace moorline
