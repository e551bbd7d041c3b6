#pragma once

#include "platform/Clock.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>
#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// Reads what the owner of a selection gives of it, whole or in pieces, on the program's own connection. The program
/// goes on meanwhile, however long the owner takes.
class SelectionReader final : public QObject {
    Q_OBJECT
public:
    /// A thousand files with the longest names there are, every byte of them escaped.
    static constexpr qsizetype largestSize = qsizetype{16} * 1024 * 1024;
    /// How long an owner may be silent, before its first word and between any two.
    static constexpr std::chrono::seconds patience{10};

    struct Question {
        xcb_atom_t selection = XCB_ATOM_NONE;
        /// The format in which it is asked for.
        xcb_atom_t target = XCB_ATOM_NONE;
        /// Of the event that led to it.
        xcb_timestamp_t time = XCB_CURRENT_TIME;
        /// What it is read for; with this window of the owner's, nothing more is expected of it.
        xcb_window_t source = XCB_WINDOW_NONE;
    };
    /// Absent where the owner refuses, gives what is no row of bytes or too much of it, falls silent or ends.
    using Received = std::function<void(const std::optional<QByteArray> &bytes)>;

    /// Asks at once, and calls back once from the event loop, unless this is gone by then. This may go with the call.
    SelectionReader(XConnection &connection, Clock &clock, const Question &question, Received received);
    ~SelectionReader() override;

private:
    void ask();
    void waitAnew();
    void answered(const xcb_selection_notify_event_t &answer);
    void propertyChanged(xcb_window_t window, xcb_atom_t property);
    /// A piece in each turn: whoever gives fast is not waited for to the end.
    void readSoon();
    void readPiece();
    /// Takes the part of the property that was read; `left` bytes of it are still to come.
    void take(const QByteArray &part, std::uint32_t left);
    void end(const std::optional<QByteArray> &bytes);

    XConnection &m_connection;
    Clock &m_clock;
    Question m_question;
    Received m_received;
    /// The owner puts it there.
    xcb_window_t m_window;
    std::unique_ptr<Clock::Timer> m_silence;
    /// Fires once the loop has turned.
    QTimer m_turn;
    QByteArray m_bytes;
    /// The number of the request.
    std::uint32_t m_asked = 0;
    /// How much of the property as it is now was read, in units of four bytes.
    std::uint32_t m_offset = 0;
    bool m_isAnswered = false;
    /// In pieces, of which an empty one is the last.
    bool m_isIncremental = false;
};

} // namespace moorline
