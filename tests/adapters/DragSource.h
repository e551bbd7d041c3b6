#pragma once

#include "platform/linux/x11/XReply.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QSocketNotifier>
#include <memory>
#include <optional>
#include <xcb/xcb.h>

namespace moorline::test {

/// Another program that something is dragged from. It gives what it offers the way a test wants it, whenever the loop
/// of the test turns.
class DragSource final : public QObject {
    Q_OBJECT
public:
    enum class Manner {
        whole,
        /// An announcement, then piece after piece, then an empty one.
        inPieces,
        /// An announcement, and as many pieces as are asked for by givePiece().
        inPiecesOnRequest,
        /// A list of numbers.
        asNumbers,
        refusing,
        silent,
    };
    struct Offer {
        QByteArray data;
        Manner manner = Manner::whole;
        qsizetype pieceSize = 64 * 1024;
    };
    struct Answer {
        bool isTaken;
        /// Empty where none is named.
        QByteArray action;

        bool operator==(const Answer &) const = default;
    };

    /// Owns XdndSelection from here on.
    explicit DragSource(Offer offer);

    [[nodiscard]] xcb_window_t window() const { return m_window; }
    /// How often it was asked for anything so far.
    [[nodiscard]] int timesAsked() const { return m_timesAsked; }
    /// Whether what was announced, or the last piece of it, was taken.
    [[nodiscard]] bool isTaken() const { return m_isTaken; }
    /// The next piece of what was announced, once the one before was taken.
    void givePiece();
    /// The program ends, in the middle of whatever it does.
    void end();

    // Version 5 of XDND. Types beyond the third are in a property.
    void enter(xcb_window_t target, const QList<QByteArray> &types = {QByteArrayLiteral("text/uri-list")});
    /// On the screen.
    void moveTo(const QPoint &place, const QByteArray &action = QByteArrayLiteral("XdndActionCopy"));
    void letGo();
    /// Without having held anything there.
    void letGoOver(xcb_window_t target);
    [[nodiscard]] bool hasEntered() const { return m_hasEntered; }
    /// What the target said of the last move; absent until it has.
    [[nodiscard]] const std::optional<Answer> &status() const { return m_status; }
    /// What targets said became of what was let go over them, in their order.
    [[nodiscard]] const QList<Answer> &finished() const { return m_finished; }

private:
    struct Disconnecter {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    void readEvents();
    void answer(const xcb_selection_request_event_t &request);
    /// True when the answer names the property.
    bool put(const xcb_selection_request_event_t &request);
    void putBytes(xcb_atom_t type, const QByteArray &bytes);
    void takenAway(const xcb_property_notify_event_t &change);
    void noteMessage(const xcb_client_message_event_t &message);
    void send(const QByteArray &type, std::initializer_list<std::uint32_t> data);
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name) const;
    [[nodiscard]] QByteArray atomName(xcb_atom_t atom) const;

    Offer m_offer;
    std::unique_ptr<xcb_connection_t, Disconnecter> m_connection;
    xcb_window_t m_window;
    std::optional<QSocketNotifier> m_notifier;
    int m_timesAsked = 0;
    /// Of whom it is asked last: where it goes.
    xcb_window_t m_requestor = XCB_WINDOW_NONE;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    xcb_atom_t m_type = XCB_ATOM_NONE;
    bool m_isGivingPieces = false;
    bool m_isTaken = false;
    xcb_window_t m_target = XCB_WINDOW_NONE;
    bool m_hasEntered = false;
    std::optional<Answer> m_status;
    QList<Answer> m_finished;
};

} // namespace moorline::test
