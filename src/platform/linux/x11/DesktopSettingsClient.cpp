#include "platform/linux/x11/DesktopSettingsClient.h"

#include "platform/linux/x11/XConnection.h"
#include "support/XSettings.h"

namespace moorline {

DesktopSettingsClient::DesktopSettingsClient(XConnection &connection, Clock &clock)
    : m_connection(connection)
    , m_clock(clock)
    , m_selection(connection.atom("_XSETTINGS_S" + QByteArray::number(connection.screenNumber())))
    , m_property(connection.atom(QByteArrayLiteral("_XSETTINGS_SETTINGS")))
{
    connect(&connection, &XConnection::selectionOwnerChanged, this, [this](xcb_atom_t selection) {
        if (selection == m_selection)
            findManager();
    });
    connect(&connection, &XConnection::propertyChanged, this, [this](xcb_window_t window, xcb_atom_t property) {
        if (window == m_manager && property == m_property)
            read();
    });
    connection.watchSelection(m_selection);
    findManager();
}

std::optional<QByteArray> DesktopSettingsClient::text(const QByteArray &name) const
{
    return xSettingsText(m_settings, name);
}

void DesktopSettingsClient::findManager()
{
    m_manager = m_connection.selectionOwner(m_selection);
    // Watched before it is read: what changes in between is told.
    if (m_manager != XCB_WINDOW_NONE)
        m_connection.watch(m_manager);
    read();
}

void DesktopSettingsClient::read()
{
    const QByteArray settings =
        m_manager == XCB_WINDOW_NONE ? QByteArray() : m_connection.request(m_manager, m_property).read().bytes();
    m_connection.reportSoon();
    if (!settings.isEmpty() || m_settings.isEmpty())
        take(settings);
    else if (!m_patience)
        m_patience = m_clock.after(patience, [this] { take({}); });
}

void DesktopSettingsClient::take(const QByteArray &settings)
{
    m_patience.reset();
    m_settings = settings;
    Q_EMIT changed();
}

} // namespace moorline
