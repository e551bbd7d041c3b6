#include "platform/linux/bus/BusProbe.h"

#include <QFileInfo>
#include <QString>

namespace moorline {

namespace {

/// Absent where there is none, and one would have to be started.
GLibPointer<gchar> addressOfSession()
{
    if (const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty())
        return GLibPointer<gchar>(g_strdup(address.constData()));
    const QString socket = QString::fromLocal8Bit(g_get_user_runtime_dir()) + QStringLiteral("/bus");
    if (!QFileInfo::exists(socket))
        return {};
    return GLibPointer<gchar>(g_strdup_printf("unix:path=%s", socket.toLocal8Bit().constData()));
}

GLibPointer<gchar> addressOf(BusKind kind, GCancellable *cancellable)
{
    if (kind == BusKind::session)
        return addressOfSession();
    return GLibPointer<gchar>(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, cancellable, nullptr));
}

} // namespace

BusProbe::BusProbe(BusKind kind)
    : m_kind(kind)
    , m_cancellable(g_cancellable_new())
{
}

bool BusProbe::answers()
{
    GCancellable *const cancellable = m_cancellable.get();
    const auto address = addressOf(m_kind, cancellable);
    if (!address)
        return false;
    const auto flags = GDBusConnectionFlags(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    const GObjectPointer<GDBusConnection> connection(
        g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, cancellable, nullptr));
    if (!connection)
        return false;
    g_dbus_connection_close_sync(connection.get(), cancellable, nullptr);
    return true;
}

void BusProbe::outliveSharedConnection()
{
    if (m_kind != BusKind::session)
        return;
    // Kept: without a user it would go, and the next one come anew.
    if (auto *shared = g_bus_get_sync(G_BUS_TYPE_SESSION, m_cancellable.get(), nullptr))
        g_dbus_connection_set_exit_on_close(shared, FALSE);
}

} // namespace moorline
