#include "platform/linux/x11/XAtoms.h"

#include "platform/linux/x11/XReply.h"

#include <string_view>

namespace moorline {

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(XAtom::count)> atomNames{
    "_GTK_APPLICATION_ID",
    "_GTK_APPLICATION_OBJECT_PATH",
    "_GTK_FRAME_EXTENTS",
    "_GTK_UNIQUE_BUS_NAME",
    "INCR",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_CLOSE_WINDOW",
    "_NET_CURRENT_DESKTOP",
    "_NET_FRAME_EXTENTS",
    "_NET_RESTACK_WINDOW",
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_WM_DESKTOP",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_FULLSCREEN",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_SKIP_PAGER",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STATE_STICKY",
    "_NET_WM_STRUT",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "text/uri-list",
    "UTF8_STRING",
    "WM_DELETE_WINDOW",
    "WM_PROTOCOLS",
    "XdndActionCopy",
    "XdndActionLink",
    "XdndActionMove",
    "XdndDrop",
    "XdndEnter",
    "XdndFinished",
    "XdndLeave",
    "XdndSelection",
    "XdndTypeList",
};
static_assert(!atomNames.back().empty(), "every atom has a name");

} // namespace

XAtoms::XAtoms(xcb_connection_t *connection)
{
    std::array<xcb_intern_atom_cookie_t, atomNames.size()> cookies{};
    for (std::size_t i = 0; i < atomNames.size(); ++i)
        cookies[i] =
            xcb_intern_atom(connection, false, static_cast<std::uint16_t>(atomNames[i].size()), atomNames[i].data());
    for (std::size_t i = 0; i < atomNames.size(); ++i) {
        const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookies[i], nullptr));
        m_atoms[i] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
}

} // namespace moorline
