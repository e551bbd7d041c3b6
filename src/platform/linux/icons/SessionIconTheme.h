#pragma once

#include "platform/linux/desktop/SessionText.h"

namespace moorline {

/// The name of the icon theme that the session uses: what the desktop tells every program through the X server, else
/// what GNOME's settings say.
class SessionIconTheme final : public QObject {
    Q_OBJECT
public:
    /// `settings` is null where there is no X server; it outlives this.
    explicit SessionIconTheme(const DesktopSettingsClient *settings);

    /// Empty where nobody says.
    [[nodiscard]] QString name() const { return m_name; }

Q_SIGNALS:
    void nameChanged();

private:
    [[nodiscard]] QString currentName() const { return m_text.told().value_or(m_text.gnomes()); }
    void look();

    SessionText m_text;
    QString m_name;
};

} // namespace moorline
