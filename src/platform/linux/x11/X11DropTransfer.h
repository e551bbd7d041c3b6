#pragma once

#include "platform/ArrivingDrop.h"
#include "platform/linux/x11/SelectionReader.h"

namespace moorline {

/// The end of a drag by XDND, whose data are read on the program's own connection.
class X11DropTransfer final : public DropTransfer {
public:
    struct Ends {
        xcb_window_t source = XCB_WINDOW_NONE;
        /// What it was let go over.
        xcb_window_t target = XCB_WINDOW_NONE;
        /// When it was let go.
        xcb_timestamp_t time = XCB_CURRENT_TIME;
    };

    X11DropTransfer(XConnection &connection, Clock &clock, const Ends &ends);
    ~X11DropTransfer() override;

    void read(const QString &format, Received received) override;
    void finish(Qt::DropAction action) override;

private:
    XConnection &m_connection;
    Clock &m_clock;
    Ends m_ends;
    std::unique_ptr<SelectionReader> m_reader;
    bool m_isFinished = false;
};

} // namespace moorline
