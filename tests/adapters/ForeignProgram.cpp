#include "ForeignProgram.h"

#include <algorithm>
#include <xcb/shape.h>
#include <xcb/xtest.h>

namespace moorline::test {

namespace {

constexpr std::uint32_t pagerSource = 2;
constexpr std::uint32_t iconicState = 3;

// What a synthetic event has set in its type.
constexpr std::uint8_t sentEventFlag = 0x80;

// Position and size by the user, so that no window manager chooses them; gravity static, so that it means the content.
constexpr std::uint32_t userPosition = 1U << 0U;
constexpr std::uint32_t userSize = 1U << 1U;
constexpr std::uint32_t windowGravity = 1U << 9U;
constexpr int gravityField = 17;
constexpr std::uint32_t staticGravity = 10;

const QByteArray compositorSelection = QByteArrayLiteral("_NET_WM_CM_S0");

} // namespace

ForeignProgram::ForeignProgram()
    : m_connection(xcb_connect(nullptr, nullptr))
    , m_screen(xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data)
{
}

xcb_atom_t ForeignProgram::atom(const QByteArray &name) const
{
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection.get(),
        xcb_intern_atom(m_connection.get(), false, static_cast<std::uint16_t>(name.size()), name.constData()),
        nullptr));
    return reply->atom;
}

QString ForeignProgram::atomName(xcb_atom_t atom) const
{
    const XReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_connection.get(), xcb_get_atom_name(m_connection.get(), atom), nullptr));
    return reply ? QString::fromLatin1(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
                 : QString();
}

xcb_window_t ForeignProgram::create(const WindowPlan &plan) const
{
    const xcb_window_t window = xcb_generate_id(m_connection.get());
    const std::array<std::uint32_t, 3> attributes{
        m_screen->white_pixel, plan.bypassesManager ? 1U : 0U, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_KEY_PRESS};
    xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, window, root(),
        static_cast<std::int16_t>(plan.frame.x()), static_cast<std::int16_t>(plan.frame.y()),
        static_cast<std::uint16_t>(plan.frame.width()), static_cast<std::uint16_t>(plan.frame.height()), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, attributes.data());
    writePlan(window, plan);
    flush();
    return window;
}

void ForeignProgram::writePlan(xcb_window_t window, const WindowPlan &plan) const
{
    QList<std::uint32_t> sizeHints(gravityField + 1, 0);
    sizeHints.first() = userPosition | userSize | windowGravity;
    sizeHints.last() = staticGravity;
    setValues(window, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", sizeHints);
    setBytes(window, "WM_CLASS", "STRING", plan.windowClass);
    if (plan.process)
        setValues(window, "_NET_WM_PID", "CARDINAL", {*plan.process});
    if (!plan.type.isEmpty())
        setValues(window, "_NET_WM_WINDOW_TYPE", "ATOM", {atom(plan.type)});
    QList<std::uint32_t> states;
    std::transform(plan.states.begin(), plan.states.end(), std::back_inserter(states),
        [this](const QByteArray &name) { return atom(name); });
    if (!states.isEmpty())
        setValues(window, "_NET_WM_STATE", "ATOM", states);
    if (plan.shadow)
        setValues(window, "_GTK_FRAME_EXTENTS", "CARDINAL",
            {static_cast<std::uint32_t>(plan.shadow->left()), static_cast<std::uint32_t>(plan.shadow->right()),
                static_cast<std::uint32_t>(plan.shadow->top()), static_cast<std::uint32_t>(plan.shadow->bottom())});
    if (plan.transientFor != XCB_WINDOW_NONE)
        setValues(window, "WM_TRANSIENT_FOR", "WINDOW", {plan.transientFor});
    if (!plan.isDecorated)
        setValues(window, "_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {2, 0, 0, 0, 0});
}

xcb_window_t ForeignProgram::show(const WindowPlan &plan) const
{
    const xcb_window_t window = create(plan);
    map(window);
    return window;
}

void ForeignProgram::map(xcb_window_t window) const
{
    xcb_map_window(m_connection.get(), window);
    flush();
}

void ForeignProgram::destroy(xcb_window_t window) const
{
    xcb_destroy_window(m_connection.get(), window);
    flush();
}

void ForeignProgram::move(xcb_window_t window, const QPoint &position) const
{
    const std::array<std::int32_t, 2> values{position.x(), position.y()};
    xcb_configure_window(m_connection.get(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values.data());
    flush();
}

void ForeignProgram::setInputRegion(xcb_window_t window, const QRect &rect) const
{
    const xcb_rectangle_t native{static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
        static_cast<std::uint16_t>(rect.width()), static_cast<std::uint16_t>(rect.height())};
    xcb_shape_rectangles(
        m_connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, window, 0, 0, 1, &native);
    flush();
}

void ForeignProgram::setValues(
    xcb_window_t window, const QByteArray &name, const QByteArray &type, const QList<std::uint32_t> &values) const
{
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, atom(name), atom(type), 32,
        static_cast<std::uint32_t>(values.size()), values.constData());
    flush();
}

void ForeignProgram::setBytes(
    xcb_window_t window, const QByteArray &name, const QByteArray &type, const QByteArray &bytes) const
{
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, atom(name), atom(type), 8,
        static_cast<std::uint32_t>(bytes.size()), bytes.constData());
    flush();
}

QByteArray ForeignProgram::bytes(xcb_window_t window, const QByteArray &name) const
{
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.get(),
        xcb_get_property(m_connection.get(), false, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 4096), nullptr));
    if (!reply)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get())};
}

QList<std::uint32_t> ForeignProgram::values(xcb_window_t window, const QByteArray &name) const
{
    const QByteArray data = bytes(window, name);
    QList<std::uint32_t> values(data.size() / 4);
    std::copy_n(data.constData(), values.size() * 4, reinterpret_cast<char *>(values.data()));
    return values;
}

QList<QByteArray> ForeignProgram::atomNames(xcb_window_t window, const QByteArray &name) const
{
    QList<QByteArray> names;
    for (const xcb_atom_t atom : values(window, name)) {
        const XReply<xcb_get_atom_name_reply_t> reply(
            xcb_get_atom_name_reply(m_connection.get(), xcb_get_atom_name(m_connection.get(), atom), nullptr));
        names.append(reply ? QByteArray(xcb_get_atom_name_name(reply.get()), reply->name_len) : QByteArray());
    }
    std::sort(names.begin(), names.end());
    return names;
}

void ForeignProgram::activate(xcb_window_t window) const
{
    send(window, "_NET_ACTIVE_WINDOW", {pagerSource, XCB_CURRENT_TIME});
}

void ForeignProgram::iconify(xcb_window_t window) const
{
    send(window, "WM_CHANGE_STATE", {iconicState});
}

void ForeignProgram::moveToDesktop(xcb_window_t window, std::uint32_t desktop) const
{
    send(window, "_NET_WM_DESKTOP", {desktop, pagerSource});
}

void ForeignProgram::switchToDesktop(std::uint32_t desktop) const
{
    send(root(), "_NET_CURRENT_DESKTOP", {desktop, XCB_CURRENT_TIME});
}

void ForeignProgram::setFullScreen(xcb_window_t window, bool isFullScreen) const
{
    send(window, "_NET_WM_STATE", {isFullScreen ? 1U : 0U, atom("_NET_WM_STATE_FULLSCREEN"), 0, pagerSource});
}

bool ForeignProgram::hasWindowManager() const
{
    const auto proof = values(root(), "_NET_SUPPORTING_WM_CHECK");
    return proof.size() == 1 && values(proof.first(), "_NET_SUPPORTING_WM_CHECK") == proof;
}

bool ForeignProgram::isViewable(xcb_window_t window) const
{
    const XReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        m_connection.get(), xcb_get_window_attributes(m_connection.get(), window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool ForeignProgram::isManaged(xcb_window_t window) const
{
    return isViewable(window) && values(root(), "_NET_CLIENT_LIST").contains(window);
}

xcb_window_t ForeignProgram::activeWindow() const
{
    return values(root(), "_NET_ACTIVE_WINDOW").value(0);
}

xcb_window_t ForeignProgram::focus() const
{
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    return reply->focus;
}

void ForeignProgram::focus(xcb_window_t window) const
{
    xcb_set_input_focus(m_connection.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    flush();
}

xcb_window_t ForeignProgram::frameOf(xcb_window_t window) const
{
    for (;;) {
        const XReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection.get(), xcb_query_tree(m_connection.get(), window), nullptr));
        if (!tree || tree->parent == root() || tree->parent == XCB_WINDOW_NONE)
            return window;
        window = tree->parent;
    }
}

QRect ForeignProgram::geometry(xcb_window_t window) const
{
    const XReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(m_connection.get(), xcb_get_geometry(m_connection.get(), window), nullptr));
    const XReply<xcb_translate_coordinates_reply_t> position(xcb_translate_coordinates_reply(
        m_connection.get(), xcb_translate_coordinates(m_connection.get(), window, root(), 0, 0), nullptr));
    return size && position ? QRect(position->dst_x, position->dst_y, size->width, size->height) : QRect();
}

bool ForeignProgram::isAbove(xcb_window_t upper, xcb_window_t lower) const
{
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_connection.get(), xcb_query_tree(m_connection.get(), root()), nullptr));
    const xcb_window_t *children = xcb_query_tree_children(tree.get());
    const QList<xcb_window_t> order(children, children + xcb_query_tree_children_length(tree.get()));
    return order.indexOf(frameOf(upper)) > order.indexOf(frameOf(lower));
}

QRect ForeignProgram::shape(xcb_window_t window, std::uint8_t kind) const
{
    const XReply<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
        m_connection.get(), xcb_shape_get_rectangles(m_connection.get(), window, kind), nullptr));
    QRect bounds;
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
        const xcb_rectangle_t &rect = xcb_shape_get_rectangles_rectangles(reply.get())[i];
        bounds |= QRect(rect.x, rect.y, rect.width, rect.height);
    }
    return bounds;
}

void ForeignProgram::movePointer(const QPoint &position) const
{
    xcb_test_fake_input(m_connection.get(), XCB_MOTION_NOTIFY, false, XCB_CURRENT_TIME, root(),
        static_cast<std::int16_t>(position.x()), static_cast<std::int16_t>(position.y()), 0);
    flush();
}

void ForeignProgram::setButton(std::uint8_t button, bool isPressed) const
{
    xcb_test_fake_input(m_connection.get(), isPressed ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button, XCB_CURRENT_TIME,
        XCB_WINDOW_NONE, 0, 0, 0);
    flush();
}

void ForeignProgram::click(const QPoint &position) const
{
    movePointer(position);
    setButton(1, true);
    setButton(1, false);
}

void ForeignProgram::setKey(std::uint8_t key, bool isPressed) const
{
    xcb_test_fake_input(m_connection.get(), isPressed ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key, XCB_CURRENT_TIME,
        XCB_WINDOW_NONE, 0, 0, 0);
    flush();
}

void ForeignProgram::readEvents()
{
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        if (event->response_type == XCB_BUTTON_PRESS)
            m_clicked.append(reinterpret_cast<const xcb_button_press_event_t &>(*event).event);
        else if (event->response_type == XCB_KEY_PRESS)
            m_typed.append(reinterpret_cast<const xcb_key_press_event_t &>(*event).event);
        else if ((event->response_type & ~sentEventFlag) == XCB_CLIENT_MESSAGE)
            noteMessage(reinterpret_cast<const xcb_client_message_event_t &>(*event));
    }
}

void ForeignProgram::noteMessage(const xcb_client_message_event_t &message)
{
    const std::uint32_t *data = message.data.data32;
    if (message.type != atom("WM_PROTOCOLS")) {
        const QString window = message.window == root() ? QStringLiteral("root") : QString::number(message.window);
        m_requests.append(QStringLiteral("%1 %2 %3 %4 %5")
                              .arg(atomName(message.type), window)
                              .arg(data[0])
                              .arg(data[1])
                              .arg(data[2]));
    } else if (data[0] == atom("WM_DELETE_WINDOW")) {
        m_closed.append(message.window);
    }
}

void ForeignProgram::listenToRequests() const
{
    constexpr std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.get(), root(), XCB_CW_EVENT_MASK, &mask);
    flush();
}

QStringList ForeignProgram::requests()
{
    readEvents();
    return m_requests;
}

qsizetype ForeignProgram::closeRequests(xcb_window_t window)
{
    readEvents();
    return m_closed.count(window);
}

qsizetype ForeignProgram::clicks(xcb_window_t window)
{
    readEvents();
    return m_clicked.count(window);
}

void ForeignProgram::ownSelection(const QByteArray &selection, xcb_window_t window) const
{
    xcb_set_selection_owner(m_connection.get(), window, atom(selection), XCB_CURRENT_TIME);
    flush();
}

qsizetype ForeignProgram::keys(xcb_window_t window)
{
    readEvents();
    return m_typed.count(window);
}

void ForeignProgram::grabKeyboard() const
{
    const XReply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(m_connection.get(),
        xcb_grab_keyboard(
            m_connection.get(), false, root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
}

void ForeignProgram::grabKey(std::uint8_t key) const
{
    xcb_grab_key(m_connection.get(), false, root(), 0, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    flush();
}

void ForeignProgram::setCompositing(bool isCompositing) const
{
    const xcb_window_t owner = isCompositing ? create({.bypassesManager = true}) : xcb_window_t{XCB_WINDOW_NONE};
    ownSelection(compositorSelection, owner);
}

void ForeignProgram::send(xcb_window_t window, const QByteArray &type, std::initializer_list<std::uint32_t> data) const
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(type);
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(m_connection.get(), false, root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char *>(&message));
    flush();
}

/// Returns when the server has done everything: what the test asks through another connection comes after it.
void ForeignProgram::flush() const
{
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
}

} // namespace moorline::test
