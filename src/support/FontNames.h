#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace moorline {

/// The family in a font's description as GTK and GNOME write it, such as "Noto Sans Bold 10": without style and size,
/// and of several families the first. Empty where there is none.
[[nodiscard]] QString familyInDescription(const QString &description);

/// The family of the general font in KDE's file of settings; absent where the file has none.
[[nodiscard]] std::optional<QString> familyInKdeSettings(const QByteArray &kdeglobals);

/// What a session says of its font.
struct SessionFontFacts {
    /// The description that the desktop tells every program; absent where none tells any.
    std::optional<QString> told;
    bool isKde = false;
    /// KDE's files of settings, the user's own before those of the system.
    QList<QByteArray> kdeSettings;
    /// The description in GNOME's settings; empty where these are not installed.
    QString gnomes;
};

/// The family of the session's texts: what is told, else in KDE's session what KDE's settings say, or KDE's own choice
/// where they are silent, and in any other what GNOME's do. Empty where nobody says.
[[nodiscard]] QString sessionFontFamily(const SessionFontFacts &facts);

} // namespace moorline
