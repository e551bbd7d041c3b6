#include "platform/linux/icons/SessionIconTheme.h"

#include "support/IconThemes.h"

#include <utility>

namespace moorline {

SessionIconTheme::SessionIconTheme(
    const DesktopSettingsClient *settings, FileWatch &fileWatch, const QStringList &desktopNames)
    : m_text(settings, fileWatch, desktopNames, {.told = "Net/IconThemeName", .gnomes = "icon-theme"})
    , m_name(currentName())
{
    connect(&m_text, &SessionText::changed, this, &SessionIconTheme::look);
}

QString SessionIconTheme::currentName() const
{
    return sessionIconTheme({
        .told = m_text.told(),
        .isKde = m_text.isKde(),
        .kdeSettings = m_text.kdeSettings(),
        .gnomes = m_text.gnomes(),
    });
}

void SessionIconTheme::look()
{
    const QString name = currentName();
    if (std::exchange(m_name, name) != name)
        Q_EMIT nameChanged();
}

} // namespace moorline
