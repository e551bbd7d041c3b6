#pragma once

#include "platform/linux/desktop/SessionText.h"

namespace moorline {

/// The name of the icon theme that the session uses: what the desktop tells every program through the X server, else
/// in KDE's session what KDE's settings say, and in any other what GNOME's do.
class SessionIconTheme final : public QObject {
    Q_OBJECT
public:
    /// `settings` is null where there is no X server. Both outlive this.
    SessionIconTheme(const DesktopSettingsClient *settings, FileWatch &fileWatch, const QStringList &desktopNames);

    /// Empty where nobody says.
    [[nodiscard]] QString name() const { return m_name; }

Q_SIGNALS:
    void nameChanged();

private:
    [[nodiscard]] QString currentName() const;
    void look();

    SessionText m_text;
    QString m_name;
};

} // namespace moorline
