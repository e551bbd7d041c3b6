#include "platform/linux/x11/PanelHints.h"

#include "platform/linux/x11/XConnection.h"

#include <QCoreApplication>
#include <array>
#include <string_view>

namespace moorline {

namespace {

constexpr std::uint32_t allDesktops = 0xFFFFFFFF;

// Instance and class, each ended by a zero byte.
constexpr std::string_view windowClass("moorline\0Moorline\0", 18);

// The nine fields of WM_HINTS; of them only "input" is given, and it is false.
constexpr std::array<std::uint32_t, 9> noInputHints{1, 0};

template <std::size_t size>
void write(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
    const std::array<std::uint32_t, size> &values)
{
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, name, type, 32, size, values.data());
}

void writeClass(xcb_connection_t *connection, xcb_window_t window)
{
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
        static_cast<std::uint32_t>(windowClass.size()), windowClass.data());
}

} // namespace

void writePanelHints(xcb_connection_t *connection, const XConnection &atoms, xcb_window_t panel)
{
    const auto atom = [&](XAtom name) { return atoms.atom(name); };
    write<1>(connection, panel, atom(XAtom::netWmWindowType), XCB_ATOM_ATOM, {atom(XAtom::netWmWindowTypeDock)});
    write<4>(connection, panel, atom(XAtom::netWmState), XCB_ATOM_ATOM,
        {atom(XAtom::netWmStateAbove), atom(XAtom::netWmStateSticky), atom(XAtom::netWmStateSkipTaskbar),
            atom(XAtom::netWmStateSkipPager)});
    write<1>(connection, panel, atom(XAtom::netWmDesktop), XCB_ATOM_CARDINAL, {allDesktops});
    write<1>(connection, panel, atom(XAtom::netWmPid), XCB_ATOM_CARDINAL,
        {static_cast<std::uint32_t>(QCoreApplication::applicationPid())});
    write(connection, panel, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, noInputHints);
    writeClass(connection, panel);
    xcb_flush(connection);
}

void writePopupHints(xcb_connection_t *connection, const XConnection &atoms, xcb_window_t popup, XAtom type)
{
    write<1>(connection, popup, atoms.atom(XAtom::netWmWindowType), XCB_ATOM_ATOM, {atoms.atom(type)});
    writeClass(connection, popup);
    xcb_flush(connection);
}

} // namespace moorline
