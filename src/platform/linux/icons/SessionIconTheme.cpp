#include "platform/linux/icons/SessionIconTheme.h"

#include "platform/linux/glib/GSettingsGroup.h"
#include "platform/linux/x11/DesktopSettingsClient.h"

namespace moorline {

namespace {

constexpr auto interfaceSchema = "org.gnome.desktop.interface";
constexpr auto themeKey = "icon-theme";

/// Null unless the schema is there and has the key: GSettings ends the program that asks for anything else.
GObjectPointer<GSettings> openInterface()
{
    const auto group = GSettingsGroup::open(interfaceSchema);
    if (!group || !group->text(themeKey))
        return nullptr;
    return GObjectPointer<GSettings>(g_settings_new(interfaceSchema));
}

} // namespace

SessionIconTheme::SessionIconTheme(const DesktopSettingsClient *settings)
    : m_settings(settings)
    , m_interface(openInterface())
{
    if (settings)
        connect(settings, &DesktopSettingsClient::changed, this, &SessionIconTheme::look);
    if (m_interface)
        m_handler = g_signal_connect_swapped(
            m_interface.get(), "changed::icon-theme", G_CALLBACK(+[](SessionIconTheme *self) { self->look(); }), this);
    m_name = currentName();
}

SessionIconTheme::~SessionIconTheme()
{
    if (m_interface)
        g_signal_handler_disconnect(m_interface.get(), m_handler);
}

QString SessionIconTheme::currentName() const
{
    if (const auto told = m_settings ? m_settings->text("Net/IconThemeName") : std::nullopt)
        return QString::fromUtf8(*told);
    if (!m_interface)
        return {};
    const GLibPointer<gchar> name(g_settings_get_string(m_interface.get(), themeKey));
    return QString::fromUtf8(name.get());
}

void SessionIconTheme::look()
{
    const QString name = currentName();
    if (std::exchange(m_name, name) != name)
        Q_EMIT nameChanged();
}

} // namespace moorline
