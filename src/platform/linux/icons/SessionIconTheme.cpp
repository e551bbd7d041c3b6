#include "platform/linux/icons/SessionIconTheme.h"

#include <utility>

namespace moorline {

SessionIconTheme::SessionIconTheme(const DesktopSettingsClient *settings)
    : m_text(settings, {.told = "Net/IconThemeName", .gnomes = "icon-theme"})
    , m_name(currentName())
{
    connect(&m_text, &SessionText::changed, this, &SessionIconTheme::look);
}

void SessionIconTheme::look()
{
    const QString name = currentName();
    if (std::exchange(m_name, name) != name)
        Q_EMIT nameChanged();
}

} // namespace moorline
