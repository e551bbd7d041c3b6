#pragma once

#include "platform/linux/glib/GObjectPointer.h"

#include <QObject>

namespace moorline {

class DesktopSettingsClient;

/// The name of the icon theme that the session uses: what the desktop tells every program through the X server, else
/// what GNOME's settings say.
class SessionIconTheme final : public QObject {
    Q_OBJECT
public:
    /// `settings` is null where there is no X server; it outlives this.
    explicit SessionIconTheme(const DesktopSettingsClient *settings);
    ~SessionIconTheme() override;

    /// Empty where nobody says.
    [[nodiscard]] QString name() const { return m_name; }

Q_SIGNALS:
    void nameChanged();

private:
    [[nodiscard]] QString currentName() const;
    void look();

    const DesktopSettingsClient *m_settings;
    /// Null where GNOME's settings are not installed.
    GObjectPointer<GSettings> m_interface;
    gulong m_handler = 0;
    QString m_name;
};

} // namespace moorline
