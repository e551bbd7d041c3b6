#include "platform/linux/docks/DockWindows.h"

#include "platform/linux/x11/ClientWindows.h"

#include <QCoreApplication>

namespace moorline {

DockWindows::DockWindows(ClientWindows &clients)
    : m_clients(clients)
{
}

QList<DockWindow> DockWindows::windows() const
{
    QList<DockWindow> docks;
    for (const ClientWindow &client : m_clients.snapshot().windows) {
        if (client.kind != WindowKind::dock || !client.isViewable
            || client.process == QCoreApplication::applicationPid())
            continue;
        docks.append({.window = client.window,
            .windowClass = client.windowClass,
            .process = client.process,
            .frame = client.frame,
            .strut = client.strut,
            .reachableFrame = client.reachableFrame});
    }
    return docks;
}

} // namespace moorline
