#include "platform/linux/x11/SelectionReader.h"

#include "platform/linux/x11/XConnection.h"

#include <utility>

namespace moorline {

namespace {

/// What is read of a property at a time, in units of four bytes: a megabyte.
constexpr std::uint32_t pieceLength = 256 * 1024;

/// Any name does, as the window is used once.
constexpr xcb_atom_t place = XCB_ATOM_CUT_BUFFER0;

} // namespace

SelectionReader::SelectionReader(XConnection &connection, Clock &clock, const Question &question, Received received)
    : m_connection(connection)
    , m_clock(clock)
    , m_question(question)
    , m_received(std::move(received))
    , m_window(xcb_generate_id(connection.native()))
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &SelectionReader::readPiece);
    connect(&connection, &XConnection::selectionAnswered, this, &SelectionReader::answered);
    connect(&connection, &XConnection::propertyChanged, this, &SelectionReader::propertyChanged);
    connect(&connection, &XConnection::structureChanged, this, [this](const xcb_generic_event_t &event) {
        const auto &destruction = reinterpret_cast<const xcb_destroy_notify_event_t &>(event);
        // The server gives the numbers of windows that are gone to others.
        const bool isNews = static_cast<std::int32_t>(event.full_sequence - m_asked) >= 0;
        if (event.response_type == XCB_DESTROY_NOTIFY && isNews && destruction.window == m_question.source)
            end(std::nullopt);
    });
    ask();
    waitAnew();
}

SelectionReader::~SelectionReader()
{
    xcb_destroy_window(m_connection.native(), m_window);
    xcb_flush(m_connection.native());
}

void SelectionReader::ask()
{
    xcb_connection_t *native = m_connection.native();
    constexpr std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(native, 0, m_window, m_connection.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    // First: an owner that has ended by now is answered for by the server.
    m_connection.watch(m_question.source);
    m_asked = xcb_convert_selection(native, m_window, m_question.selection, m_question.target, place, m_question.time)
                  .sequence;
    xcb_flush(native);
}

void SelectionReader::waitAnew()
{
    m_silence = m_clock.after(patience, [this] { end(std::nullopt); });
}

void SelectionReader::answered(const xcb_selection_notify_event_t &answer)
{
    if (answer.requestor != m_window || answer.selection != m_question.selection || m_isAnswered)
        return;
    m_isAnswered = true;
    waitAnew();
    if (answer.property == place)
        readSoon();
    else
        end(std::nullopt);
}

void SelectionReader::propertyChanged(xcb_window_t window, xcb_atom_t property)
{
    // It changes when it is taken away, too; then there is nothing to read.
    if (window == m_window && property == place && m_isIncremental)
        readSoon();
}

void SelectionReader::readSoon()
{
    m_turn.start();
}

void SelectionReader::readPiece()
{
    xcb_connection_t *native = m_connection.native();
    // Once it is read to its end the server takes it away, which asks the owner for the next.
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(native,
        xcb_get_property(native, true, m_window, place, XCB_GET_PROPERTY_TYPE_ANY, m_offset, pieceLength), nullptr));
    m_connection.reportSoon();
    if (!reply || reply->type == XCB_ATOM_NONE) {
        // The next piece is not there yet, perhaps; what was said to be there whole should be.
        if (!m_isIncremental)
            end(std::nullopt);
        return;
    }
    if (reply->type == m_connection.atom(XAtom::incr) && !m_isIncremental) {
        m_isIncremental = true;
        return;
    }
    if (reply->format != 8)
        return end(std::nullopt);
    const auto length = static_cast<qsizetype>(reply->value_len);
    take({static_cast<const char *>(xcb_get_property_value(reply.get())), length}, reply->bytes_after);
}

void SelectionReader::take(const QByteArray &part, std::uint32_t left)
{
    if (m_bytes.size() + part.size() + static_cast<qsizetype>(left) > largestSize)
        return end(std::nullopt);
    const bool isEnd = left == 0 && (!m_isIncremental || (part.isEmpty() && m_offset == 0));
    m_bytes.append(part);
    m_offset = left > 0 ? m_offset + pieceLength : 0;
    if (isEnd)
        return end(m_bytes);
    waitAnew();
    if (left > 0)
        readSoon();
}

void SelectionReader::end(const std::optional<QByteArray> &bytes)
{
    if (!m_received)
        return;
    m_silence.reset();
    m_turn.stop();
    // This may go with the call.
    std::exchange(m_received, nullptr)(bytes);
}

} // namespace moorline
