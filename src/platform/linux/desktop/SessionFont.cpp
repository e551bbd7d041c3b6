#include "platform/linux/desktop/SessionFont.h"

#include "support/FontNames.h"

#include <utility>

namespace moorline {

SessionFont::SessionFont(const DesktopSettingsClient *settings, FileWatch &fileWatch, const QStringList &desktopNames)
    : m_text(settings, fileWatch, desktopNames, {.told = "Gtk/FontName", .gnomes = "font-name"})
    , m_family(currentFamily())
{
    connect(&m_text, &SessionText::changed, this, &SessionFont::look);
}

QString SessionFont::currentFamily() const
{
    return sessionFontFamily({
        .told = m_text.told(),
        .isKde = m_text.isKde(),
        .kdeSettings = m_text.kdeSettings(),
        .gnomes = m_text.gnomes(),
    });
}

void SessionFont::look()
{
    const QString family = currentFamily();
    if (std::exchange(m_family, family) != family)
        Q_EMIT familyChanged();
}

} // namespace moorline
