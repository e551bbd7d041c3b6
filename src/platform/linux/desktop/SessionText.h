#pragma once

#include "platform/FileWatch.h"
#include "platform/linux/glib/GObjectPointer.h"

#include <QByteArray>
#include <QObject>
#include <QStringList>
#include <optional>

namespace moorline {

class DesktopSettingsClient;

/// One of the texts in which a session says how it looks: as the desktop tells it to every program through the X
/// server, as KDE's settings have it in a session of KDE's, and as GNOME's do.
class SessionText final : public QObject {
    Q_OBJECT
public:
    /// What it is called by each of them.
    struct Names {
        QByteArray told;
        QByteArray gnomes;
    };

    /// `settings` is null where there is no X server. Both outlive this.
    SessionText(
        const DesktopSettingsClient *settings, FileWatch &fileWatch, const QStringList &desktopNames, Names names);
    ~SessionText() override;

    /// Absent where no desktop tells it.
    [[nodiscard]] std::optional<QString> told() const;
    [[nodiscard]] bool isKde() const { return m_isKde; }
    /// The contents of KDE's files of settings, the user's own before those of the system. None in any other session.
    [[nodiscard]] QList<QByteArray> kdeSettings() const;
    /// Empty where GNOME's settings are not installed.
    [[nodiscard]] QString gnomes() const;

Q_SIGNALS:
    /// Any of them may be another now.
    void changed();

private:
    const DesktopSettingsClient *m_settings;
    Names m_names;
    /// Null where GNOME's settings are not installed.
    GObjectPointer<GSettings> m_gnome;
    gulong m_handler = 0;
    bool m_isKde;
    /// Of KDE's settings; null in any other session.
    std::unique_ptr<FileWatch::Watch> m_kdeWatch;
};

} // namespace moorline
