#include "platform/linux/x11/X11DropTarget.h"

#include "platform/linux/x11/X11DropTransfer.h"
#include "platform/linux/x11/XConnection.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <utility>

namespace moorline {

namespace {

// What a synthetic event, sent by a program instead of the server, has set in its type.
constexpr std::uint8_t sentEventFlag = 0x80;

/// What else XdndEnter says where it has room for three formats.
constexpr std::uint32_t hasTypeList = 1;

/// Tells the window the same of something else.
template <typename Event>
void tell(QWindow &window, QDragMoveEvent &event, const QMimeData &offered)
{
    Event told(event.position().toPoint(), event.possibleActions(), &offered, event.buttons(), event.modifiers());
    QCoreApplication::sendEvent(&window, &told);
    event.setDropAction(told.dropAction());
    event.setAccepted(told.isAccepted());
}

} // namespace

X11DropTarget::X11DropTarget(XConnection &connection, Clock &clock, QWindow &window)
    : m_connection(connection)
    , m_clock(clock)
    , m_window(&window)
{
    window.installEventFilter(this);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11DropTarget::~X11DropTarget()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool X11DropTarget::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        return moved(*static_cast<QDragMoveEvent *>(event));
    case QEvent::DragLeave:
    case QEvent::Drop:
        m_held.reset();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool X11DropTarget::moved(QDragMoveEvent &event)
{
    // The program's own drags carry what they carry.
    if (event.source() || dynamic_cast<const ArrivingDrop *>(event.mimeData()))
        return false;
    QStringList formats = event.mimeData()->formats();
    // Qt makes one of what browsers tell of a link.
    if (!m_offersFiles)
        formats.removeAll(fileListFormat());
    m_held = Held{.place = event.position(),
        .actions = event.possibleActions(),
        .formats = formats,
        .buttons = event.buttons(),
        .modifiers = event.modifiers()};
    const ArrivingDrop offered(formats, nullptr);
    if (event.type() == QEvent::DragEnter)
        tell<QDragEnterEvent>(*m_window, event, offered);
    else
        tell<QDragMoveEvent>(*m_window, event, offered);
    return true;
}

bool X11DropTarget::nativeEventFilter(const QByteArray &type, void *message, [[maybe_unused]] qintptr *result)
{
    auto *event = static_cast<xcb_generic_event_t *>(message);
    if (type == "xcb_generic_event_t" && (event->response_type & ~sentEventFlag) == XCB_CLIENT_MESSAGE)
        messageCame(*static_cast<xcb_client_message_event_t *>(message));
    return false;
}

void X11DropTarget::messageCame(xcb_client_message_event_t &message)
{
    const auto &data = message.data.data32;
    if (!m_window || !m_window->handle() || message.window != m_window->winId() || message.format != 32)
        return;
    if (message.type == m_connection.atom(XAtom::xdndEnter)) {
        entered(message);
    } else if (message.type == m_connection.atom(XAtom::xdndDrop) && data[0] == m_source) {
        letGo(data[2]);
        // All that Qt learns: the drag is over the window no more.
        message.type = m_connection.atom(XAtom::xdndLeave);
    }
}

void X11DropTarget::entered(const xcb_client_message_event_t &message)
{
    const auto &data = message.data.data32;
    m_source = data[0];
    const QList<std::uint32_t> types = (data[1] & hasTypeList) == 0
        ? QList<std::uint32_t>(&data[2], std::end(data))
        : m_connection.property(m_source, XAtom::xdndTypeList).values(XCB_ATOM_ATOM);
    m_connection.reportSoon();
    m_offersFiles = types.contains(m_connection.atom(XAtom::textUriList));
}

void X11DropTarget::letGo(xcb_timestamp_t time)
{
    const X11DropTransfer::Ends ends{.source = std::exchange(m_source, XCB_WINDOW_NONE),
        .target = static_cast<xcb_window_t>(m_window->winId()),
        .time = time};
    const auto transfer = std::make_shared<X11DropTransfer>(m_connection, m_clock, ends);
    const std::optional<Held> held = std::exchange(m_held, std::nullopt);
    if (!held)
        return;
    const ArrivingDrop arriving(held->formats, transfer);
    QDropEvent drop(held->place, held->actions, &arriving, held->buttons, held->modifiers);
    QCoreApplication::sendEvent(m_window, &drop);
}

} // namespace moorline
