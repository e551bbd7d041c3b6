#include "platform/linux/x11/XConnection.h"

#include <QAbstractEventDispatcher>
#include <QDebug>
#include <xcb/randr.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

namespace moorline {

namespace {

// What a synthetic event, sent by a program instead of the server, has set in its type.
constexpr std::uint8_t sentEventFlag = 0x80;

const xcb_screen_t *screenOf(xcb_connection_t *connection, int number)
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0 && number > 0; --number)
        xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

/// Absent when the server lacks the extension.
std::optional<std::uint8_t> firstEvent(xcb_connection_t *connection, xcb_extension_t &extension)
{
    const xcb_query_extension_reply_t *data = xcb_get_extension_data(connection, &extension);
    return data && data->present ? std::optional(data->first_event) : std::nullopt;
}

/// The opcode of version 2.2 of the input extension, which reports presses also while another program holds on to the
/// pointer. Zero where there is none.
std::uint8_t inputOpcode(xcb_connection_t *connection)
{
    const xcb_query_extension_reply_t *data = xcb_get_extension_data(connection, &xcb_input_id);
    if (!data || !data->present)
        return 0;
    const XReply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    const bool isNewEnough = version && version->major_version == 2 && version->minor_version >= 1;
    return isNewEnough ? data->major_opcode : std::uint8_t{0};
}

/// Both extensions stay mute until they were told which version the program speaks.
void announceVersions(xcb_connection_t *connection)
{
    const auto randr = xcb_randr_query_version(connection, 1, 5);
    const auto fixes = xcb_xfixes_query_version(connection, 4, 0);
    const XReply<xcb_randr_query_version_reply_t> randrReply(xcb_randr_query_version_reply(connection, randr, nullptr));
    const XReply<xcb_xfixes_query_version_reply_t> fixesReply(
        xcb_xfixes_query_version_reply(connection, fixes, nullptr));
}

} // namespace

std::unique_ptr<XConnection> XConnection::open()
{
    int screenNumber = 0;
    NativeConnection native(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(native.get()) != 0)
        return nullptr;
    const xcb_screen_t *screen = screenOf(native.get(), screenNumber);
    const auto shape = firstEvent(native.get(), xcb_shape_id);
    const auto randr = firstEvent(native.get(), xcb_randr_id);
    const auto fixes = firstEvent(native.get(), xcb_xfixes_id);
    if (!screen || !shape || !randr || !fixes) {
        qDebug("Moorline: the X server lacks the SHAPE, RANDR or XFIXES extension");
        return nullptr;
    }
    announceVersions(native.get());
    return std::unique_ptr<XConnection>(
        new XConnection(std::move(native), screen, screenNumber, {*shape, *randr, *fixes}));
}

XConnection::XConnection(NativeConnection native, const xcb_screen_t *screen, int screenNumber, FirstEvents firstEvents)
    : m_native(std::move(native))
    , m_screen(screen)
    , m_screenNumber(screenNumber)
    , m_atoms(m_native.get())
    , m_firstEvents(firstEvents)
    , m_inputOpcode(inputOpcode(m_native.get()))
    , m_notifier(xcb_get_file_descriptor(m_native.get()), QSocketNotifier::Read)
{
    watchRoot();
    watchCompositor();
    createOwnWindow();
    connect(&m_notifier, &QSocketNotifier::activated, this, &XConnection::readEvents);
    // A single question may take events off the socket as well; they are reported before the program sleeps.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
        &XConnection::dispatchQueuedEvents);
}

PendingProperty XConnection::request(xcb_window_t window, XAtom name) const
{
    return request(window, atom(name));
}

PendingProperty XConnection::request(xcb_window_t window, xcb_atom_t name) const
{
    return {m_native.get(), window, name};
}

XProperty XConnection::property(xcb_window_t window, XAtom name) const
{
    return request(window, name).read();
}

void XConnection::watch(xcb_window_t window) const
{
    constexpr std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_native.get(), window, XCB_CW_EVENT_MASK, &mask);
    xcb_shape_select_input(m_native.get(), window, true);
}

xcb_timestamp_t XConnection::serverTime()
{
    xcb_change_property(m_native.get(), XCB_PROP_MODE_APPEND, m_ownWindow, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, "");
    // Once this is answered, the event about the property is here.
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_native.get(), xcb_get_input_focus(m_native.get()), nullptr));
    while (Event event{xcb_poll_for_queued_event(m_native.get())}) {
        if (!tookTime(*event))
            m_delayed.push_back(std::move(event));
    }
    if (!m_delayed.empty())
        reportSoon();
    return m_serverTime;
}

bool XConnection::tookTime(const xcb_generic_event_t &event)
{
    const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
    if (event.response_type != XCB_PROPERTY_NOTIFY || change.window != m_ownWindow)
        return false;
    m_serverTime = change.time;
    return true;
}

void XConnection::setReportsPresses(bool reports)
{
    if (m_inputOpcode == 0)
        return;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } const selection{
        {XCB_INPUT_DEVICE_ALL_MASTER, 1}, reports ? std::uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS} : 0U};
    xcb_input_xi_select_events(m_native.get(), root(), 1, &selection.head);
    // What is pressed once this returns is reported.
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_native.get(), xcb_get_input_focus(m_native.get()), nullptr));
}

xcb_atom_t XConnection::atom(const QByteArray &name) const
{
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_native.get(),
        xcb_intern_atom(m_native.get(), false, static_cast<std::uint16_t>(name.size()), name.constData()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void XConnection::watchSelection(xcb_atom_t selection) const
{
    xcb_xfixes_select_selection_input(m_native.get(), root(), selection,
        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

xcb_window_t XConnection::selectionOwner(xcb_atom_t selection) const
{
    const XReply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(m_native.get(), xcb_get_selection_owner(m_native.get(), selection), nullptr));
    return owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
}

void XConnection::reportSoon()
{
    QMetaObject::invokeMethod(this, &XConnection::dispatchQueuedEvents, Qt::QueuedConnection);
}

bool XConnection::hasMonitors() const
{
    const XReply<xcb_randr_get_monitors_reply_t> monitors(
        xcb_randr_get_monitors_reply(m_native.get(), xcb_randr_get_monitors(m_native.get(), root(), true), nullptr));
    return !monitors || monitors->nMonitors > 0;
}

void XConnection::watchRoot()
{
    constexpr std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_native.get(), root(), XCB_CW_EVENT_MASK, &mask);
    xcb_randr_select_input(m_native.get(), root(),
        XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    xcb_flush(m_native.get());
}

void XConnection::watchCompositor()
{
    m_compositorSelection = atom("_NET_WM_CM_S" + QByteArray::number(m_screenNumber));
    watchSelection(m_compositorSelection);
    m_isComposited = selectionOwner(m_compositorSelection) != XCB_WINDOW_NONE;
}

void XConnection::createOwnWindow()
{
    constexpr std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    m_ownWindow = xcb_generate_id(m_native.get());
    xcb_create_window(m_native.get(), 0, m_ownWindow, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
}

void XConnection::readEvents()
{
    // What the socket holds becomes queued.
    if (Event event{xcb_poll_for_event(m_native.get())})
        m_delayed.push_back(std::move(event));
    dispatchQueuedEvents();
    // A connection that broke stays readable for ever.
    if (xcb_connection_has_error(m_native.get()) != 0)
        m_notifier.setEnabled(false);
}

void XConnection::dispatchQueuedEvents()
{
    while (const Event event = nextEvent())
        dispatch(*event);
    xcb_flush(m_native.get());
}

XConnection::Event XConnection::nextEvent()
{
    if (m_delayed.empty())
        return Event(xcb_poll_for_queued_event(m_native.get()));
    Event event = std::move(m_delayed.front());
    m_delayed.pop_front();
    return event;
}

void XConnection::dispatch(const xcb_generic_event_t &event)
{
    // Programs send these themselves.
    if ((event.response_type & ~sentEventFlag) == XCB_SELECTION_NOTIFY)
        Q_EMIT selectionAnswered(reinterpret_cast<const xcb_selection_notify_event_t &>(event));
    if ((event.response_type & sentEventFlag) != 0 || tookTime(event))
        return;
    switch (event.response_type) {
    case XCB_PROPERTY_NOTIFY: {
        const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
        Q_EMIT propertyChanged(change.window, change.atom);
        break;
    }
    case XCB_CREATE_NOTIFY:
    case XCB_DESTROY_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_GRAVITY_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
        Q_EMIT structureChanged(event);
        break;
    case XCB_EXPOSE:
    case XCB_BUTTON_PRESS:
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        Q_EMIT ownWindowTold(event);
        break;
    case XCB_KEY_PRESS:
        Q_EMIT keyPressed(reinterpret_cast<const xcb_key_press_event_t &>(event).detail);
        break;
    case XCB_GE_GENERIC:
        dispatchInput(reinterpret_cast<const xcb_ge_generic_event_t &>(event));
        break;
    default:
        dispatchExtension(event.response_type, event);
    }
}

void XConnection::dispatchExtension(std::uint8_t type, const xcb_generic_event_t &event)
{
    if (type == m_firstEvents.shape + XCB_SHAPE_NOTIFY) {
        Q_EMIT shapeChanged(reinterpret_cast<const xcb_shape_notify_event_t &>(event).affected_window);
    } else if (type == m_firstEvents.randr + XCB_RANDR_SCREEN_CHANGE_NOTIFY
        || type == m_firstEvents.randr + XCB_RANDR_NOTIFY) {
        Q_EMIT monitorsChanged();
    } else if (type == m_firstEvents.fixes + XCB_XFIXES_SELECTION_NOTIFY) {
        const auto &change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(event);
        if (change.selection == m_compositorSelection) {
            m_isComposited = change.owner != XCB_WINDOW_NONE;
            Q_EMIT compositionChanged();
        }
        Q_EMIT selectionOwnerChanged(change.selection);
    }
}

void XConnection::dispatchInput(const xcb_ge_generic_event_t &event)
{
    if (event.extension == m_inputOpcode && event.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
        Q_EMIT buttonPressed(reinterpret_cast<const xcb_input_raw_button_press_event_t &>(event).detail);
}

} // namespace moorline
