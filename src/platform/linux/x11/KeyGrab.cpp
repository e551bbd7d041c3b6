#include "platform/linux/x11/KeyGrab.h"

#include "platform/linux/x11/XConnection.h"

#include <QDebug>
#include <algorithm>
#include <array>
#include <vector>

namespace moorline {

namespace {

/// A lock that is on is held, too, for the server, and who drags holds down what chooses between copy and link.
constexpr std::array modifiers{XCB_MOD_MASK_SHIFT, XCB_MOD_MASK_CONTROL, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2};

std::vector<std::uint16_t> combinations()
{
    std::vector<std::uint16_t> masks{0};
    for (const std::uint16_t modifier : modifiers) {
        const std::vector<std::uint16_t> without = masks;
        for (const std::uint16_t mask : without)
            masks.push_back(mask | modifier);
    }
    return masks;
}

QList<xcb_keycode_t> keysOf(xcb_connection_t *connection, xcb_keysym_t symbol)
{
    const xcb_setup_t *setup = xcb_get_setup(connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const XReply<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(connection,
        xcb_get_keyboard_mapping(connection, setup->min_keycode, static_cast<std::uint8_t>(count)), nullptr));
    QList<xcb_keycode_t> keys;
    if (!mapping)
        return keys;
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    const int width = mapping->keysyms_per_keycode;
    for (int key = 0; key < count; ++key, symbols += width) {
        if (std::find(symbols, symbols + width, symbol) != symbols + width)
            keys.append(static_cast<xcb_keycode_t>(setup->min_keycode + key));
    }
    return keys;
}

} // namespace

KeyGrab::KeyGrab(XConnection &connection, xcb_keysym_t symbol)
    : m_connection(connection)
    , m_keys(keysOf(connection.native(), symbol))
{
    std::vector<xcb_void_cookie_t> grabs;
    for (const xcb_keycode_t key : std::as_const(m_keys)) {
        for (const std::uint16_t mask : combinations()) {
            grabs.push_back(xcb_grab_key_checked(
                connection.native(), false, connection.root(), mask, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
    }
    const auto isRefused = [&connection](const xcb_void_cookie_t &grab) {
        return XReply<xcb_generic_error_t>(xcb_request_check(connection.native(), grab)) != nullptr;
    };
    if (const auto refused = std::count_if(grabs.begin(), grabs.end(), isRefused))
        qDebug("Moorline: another program has %d of %d ways to press a key", int(refused), int(grabs.size()));
}

KeyGrab::~KeyGrab()
{
    // One that is pressed now stays here until it is let go: its repeats would go to whoever has the keyboard.
    for (const xcb_keycode_t key : std::as_const(m_keys))
        xcb_ungrab_key(m_connection.native(), key, m_connection.root(), XCB_MOD_MASK_ANY);
    xcb_flush(m_connection.native());
}

} // namespace moorline
