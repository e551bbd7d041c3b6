#include "DragSource.h"

#include <algorithm>
#include <utility>

namespace moorline::test {

namespace {

// What a synthetic event, sent by a program instead of the server, has set in its type.
constexpr std::uint8_t sentEventFlag = 0x80;
constexpr std::uint32_t protocolVersion = 5;

} // namespace

DragSource::DragSource(Offer offer)
    : m_offer(std::move(offer))
    , m_connection(xcb_connect(nullptr, nullptr))
    , m_window(xcb_generate_id(m_connection.get()))
{
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    xcb_create_window(m_connection.get(), 0, m_window, screen->root, -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(m_connection.get(), m_window, atom("XdndSelection"), XCB_CURRENT_TIME);
    // The server has done it once it answers.
    readEvents();
    m_notifier.emplace(xcb_get_file_descriptor(m_connection.get()), QSocketNotifier::Read);
    connect(&*m_notifier, &QSocketNotifier::activated, this, &DragSource::readEvents);
}

void DragSource::end()
{
    m_notifier.reset();
    m_connection.reset();
}

void DragSource::readEvents()
{
    // What comes while a name is asked for is queued: all of it is handled before the socket is looked at again.
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        switch (event->response_type & ~sentEventFlag) {
        case XCB_SELECTION_REQUEST:
            answer(reinterpret_cast<const xcb_selection_request_event_t &>(*event));
            break;
        case XCB_PROPERTY_NOTIFY:
            takenAway(reinterpret_cast<const xcb_property_notify_event_t &>(*event));
            break;
        case XCB_CLIENT_MESSAGE:
            noteMessage(reinterpret_cast<const xcb_client_message_event_t &>(*event));
            break;
        default:
            break;
        }
    }
    xcb_flush(m_connection.get());
}

void DragSource::answer(const xcb_selection_request_event_t &request)
{
    ++m_timesAsked;
    if (m_offer.manner == Manner::silent)
        return;
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = request.time;
    answer.requestor = request.requestor;
    answer.selection = request.selection;
    answer.target = request.target;
    answer.property = put(request) ? request.property : xcb_atom_t{XCB_ATOM_NONE};
    xcb_send_event(
        m_connection.get(), false, request.requestor, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&answer));
}

bool DragSource::put(const xcb_selection_request_event_t &request)
{
    m_requestor = request.requestor;
    m_property = request.property;
    m_type = request.target;
    constexpr std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    const auto size = static_cast<std::uint32_t>(m_offer.data.size());
    switch (m_offer.manner) {
    case Manner::whole:
        putBytes(m_type, m_offer.data);
        return true;
    case Manner::inPieces:
    case Manner::inPiecesOnRequest:
        xcb_change_window_attributes(m_connection.get(), m_requestor, XCB_CW_EVENT_MASK, &mask);
        xcb_change_property(
            m_connection.get(), XCB_PROP_MODE_REPLACE, m_requestor, m_property, atom("INCR"), 32, 1, &size);
        m_isGivingPieces = true;
        return true;
    case Manner::asNumbers:
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_requestor, m_property, m_type, 32, 1, &size);
        return true;
    case Manner::refusing:
    case Manner::silent:
        break;
    }
    return false;
}

void DragSource::putBytes(xcb_atom_t type, const QByteArray &bytes)
{
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_requestor, m_property, type, 8,
        static_cast<std::uint32_t>(bytes.size()), bytes.constData());
}

void DragSource::takenAway(const xcb_property_notify_event_t &change)
{
    const bool isOurs = change.window == m_requestor && change.atom == m_property;
    if (!isOurs || change.state != XCB_PROPERTY_DELETE)
        return;
    m_isTaken = true;
    if (m_offer.manner == Manner::inPieces)
        givePiece();
}

void DragSource::givePiece()
{
    if (!m_isGivingPieces)
        return;
    const QByteArray piece = m_offer.data.left(m_offer.pieceSize);
    m_offer.data.remove(0, piece.size());
    m_isGivingPieces = !piece.isEmpty();
    m_isTaken = false;
    putBytes(m_type, piece);
    xcb_flush(m_connection.get());
}

void DragSource::noteMessage(const xcb_client_message_event_t &message)
{
    const auto &data = message.data.data32;
    const QByteArray type = atomName(message.type);
    if (type == "XdndStatus")
        m_status = Answer{.isTaken = (data[1] & 1U) != 0, .action = atomName(data[4])};
    else if (type == "XdndFinished" && data[0] == m_target)
        m_finished.append({.isTaken = (data[1] & 1U) != 0, .action = atomName(data[2])});
}

void DragSource::enter(xcb_window_t target, const QList<QByteArray> &types)
{
    m_target = target;
    m_hasEntered = true;
    QList<std::uint32_t> atoms;
    std::transform(
        types.begin(), types.end(), std::back_inserter(atoms), [this](const QByteArray &type) { return atom(type); });
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, atom("XdndTypeList"), XCB_ATOM_ATOM, 32,
        static_cast<std::uint32_t>(atoms.size()), atoms.constData());
    const std::uint32_t hasMore = atoms.size() > 3 ? 1 : 0;
    send("XdndEnter", {protocolVersion << 24U | hasMore, atoms.value(0), atoms.value(1), atoms.value(2)});
}

void DragSource::moveTo(const QPoint &place, const QByteArray &action)
{
    m_status.reset();
    const auto packed = static_cast<std::uint32_t>(place.x()) << 16U | static_cast<std::uint32_t>(place.y());
    send("XdndPosition", {0, packed, XCB_CURRENT_TIME, atom(action)});
}

void DragSource::letGo()
{
    m_hasEntered = false;
    send("XdndDrop", {0, XCB_CURRENT_TIME, 0, 0});
}

void DragSource::letGoOver(xcb_window_t target)
{
    m_target = target;
    letGo();
}

void DragSource::send(const QByteArray &type, std::initializer_list<std::uint32_t> data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_target;
    message.type = atom(type);
    message.data.data32[0] = m_window;
    std::copy(data.begin(), data.end(), &message.data.data32[1]);
    xcb_send_event(
        m_connection.get(), false, m_target, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection.get());
}

xcb_atom_t DragSource::atom(const QByteArray &name) const
{
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection.get(),
        xcb_intern_atom(m_connection.get(), false, static_cast<std::uint16_t>(name.size()), name.constData()),
        nullptr));
    return reply->atom;
}

QByteArray DragSource::atomName(xcb_atom_t atom) const
{
    const XReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_connection.get(), xcb_get_atom_name(m_connection.get(), atom), nullptr));
    return reply ? QByteArray(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
                 : QByteArray();
}

} // namespace moorline::test
