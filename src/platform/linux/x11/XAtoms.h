#pragma once

#include <array>
#include <cstddef>
#include <xcb/xcb.h>

namespace moorline {

/// The names that are used on the X server beyond the predefined ones.
enum class XAtom : std::size_t {
    gtkApplicationId,
    gtkApplicationObjectPath,
    gtkFrameExtents,
    gtkUniqueBusName,
    incr,
    netActiveWindow,
    netClientList,
    netClientListStacking,
    netCloseWindow,
    netCurrentDesktop,
    netFrameExtents,
    netRestackWindow,
    netSupported,
    netSupportingWmCheck,
    netWmDesktop,
    netWmName,
    netWmPid,
    netWmState,
    netWmStateAbove,
    netWmStateFullscreen,
    netWmStateHidden,
    netWmStateSkipPager,
    netWmStateSkipTaskbar,
    netWmStateSticky,
    netWmStrut,
    netWmStrutPartial,
    netWmWindowType,
    netWmWindowTypeDesktop,
    netWmWindowTypeDialog,
    netWmWindowTypeDock,
    netWmWindowTypeNormal,
    netWmWindowTypePopupMenu,
    netWmWindowTypeTooltip,
    netWmWindowTypeUtility,
    textUriList,
    utf8String,
    wmDeleteWindow,
    wmProtocols,
    xdndActionCopy,
    xdndActionLink,
    xdndActionMove,
    xdndDrop,
    xdndEnter,
    xdndFinished,
    xdndLeave,
    xdndSelection,
    xdndTypeList,
    count,
};

/// Every XAtom as this server numbers it.
class XAtoms final {
public:
    explicit XAtoms(xcb_connection_t *connection);

    [[nodiscard]] xcb_atom_t operator[](XAtom name) const { return m_atoms[static_cast<std::size_t>(name)]; }

private:
    std::array<xcb_atom_t, static_cast<std::size_t>(XAtom::count)> m_atoms{};
};

} // namespace moorline
