#pragma once

#include "platform/linux/glib/GObjectPointer.h"

#include <QByteArray>
#include <QObject>
#include <optional>

namespace moorline {

class DesktopSettingsClient;

/// One of the texts in which a session says how it looks: as the desktop tells it to every program through the X
/// server, and as GNOME's settings have it.
class SessionText final : public QObject {
    Q_OBJECT
public:
    /// What it is called by each of them.
    struct Names {
        QByteArray told;
        QByteArray gnomes;
    };

    /// `settings` is null where there is no X server; it outlives this.
    SessionText(const DesktopSettingsClient *settings, Names names);
    ~SessionText() override;

    /// Absent where no desktop tells it.
    [[nodiscard]] std::optional<QString> told() const;
    /// Empty where GNOME's settings are not installed.
    [[nodiscard]] QString gnomes() const;

Q_SIGNALS:
    /// Either may be another now.
    void changed();

private:
    const DesktopSettingsClient *m_settings;
    Names m_names;
    /// Null where GNOME's settings are not installed.
    GObjectPointer<GSettings> m_gnome;
    gulong m_handler = 0;
};

} // namespace moorline
