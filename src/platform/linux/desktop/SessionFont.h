#pragma once

#include "platform/SystemFont.h"
#include "platform/linux/desktop/SessionText.h"

namespace moorline {

/// The font that the session uses: what the desktop tells every program through the X server, else in KDE's session
/// what KDE's settings say, and in any other what GNOME's do.
class SessionFont final : public SystemFont {
    Q_OBJECT
public:
    /// `settings` is null where there is no X server. Both outlive this.
    SessionFont(const DesktopSettingsClient *settings, FileWatch &fileWatch, const QStringList &desktopNames);

    [[nodiscard]] QString family() const override { return m_family; }

private:
    [[nodiscard]] QString currentFamily() const;
    void look();

    SessionText m_text;
    QString m_family;
};

} // namespace moorline
