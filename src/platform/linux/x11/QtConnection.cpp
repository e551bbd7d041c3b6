#include "platform/linux/x11/QtConnection.h"

#include "platform/linux/x11/XReply.h"

#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>

namespace moorline {

xcb_connection_t *qtConnection()
{
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

void waitForQt()
{
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(qtConnection(), xcb_get_input_focus(qtConnection()), nullptr));
}

} // namespace moorline
