#include "platform/linux/x11/X11PopupWindow.h"

#include "platform/linux/x11/PanelHints.h"
#include "platform/linux/x11/QtConnection.h"
#include "platform/linux/x11/X11Coordinates.h"
#include "platform/linux/x11/XConnection.h"

namespace moorline {

namespace {

XAtom windowType(PopupKind kind)
{
    switch (kind) {
    case PopupKind::menu:
    case PopupKind::popover:
        return XAtom::netWmWindowTypePopupMenu;
    case PopupKind::helpTag:
        return XAtom::netWmWindowTypeTooltip;
    }
    return XAtom::netWmWindowTypePopupMenu;
}

Qt::WindowFlags windowFlags(PopupKind kind)
{
    Qt::WindowFlags flags =
        Qt::Tool | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint | Qt::BypassWindowManagerHint;
    if (kind == PopupKind::helpTag)
        flags |= Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput;
    return flags;
}

} // namespace

X11PopupWindow::X11PopupWindow(XConnection &connection, QWidget &window, PopupKind kind)
    : m_connection(connection)
    , m_kind(kind)
    , m_window(&window)
{
    window.setWindowFlags(windowFlags(kind));
    window.setAttribute(Qt::WA_TranslucentBackground);
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    window.winId();
    writeHints();
}

void X11PopupWindow::setFrame(const QRectF &frame)
{
    m_window->setGeometry(X11Coordinates::current().qtFromFrame(frame).toRect());
}

void X11PopupWindow::orderFront()
{
    m_window->show();
    // One that was shown before lies where the panel has been placed above since.
    m_window->raise();
    // Qt writes some of the hints anew when it maps a window.
    writeHints();
}

void X11PopupWindow::takeKeyboard()
{
    waitForQt();
    m_loan.emplace(m_connection, native());
}

void X11PopupWindow::orderOut()
{
    // Before the window goes: the server would lead the focus somewhere by itself.
    m_loan.reset();
    if (m_window)
        m_window->hide();
}

xcb_window_t X11PopupWindow::native() const
{
    return static_cast<xcb_window_t>(m_window->internalWinId());
}

void X11PopupWindow::writeHints() const
{
    writePopupHints(qtConnection(), m_connection, native(), windowType(m_kind));
}

} // namespace moorline
