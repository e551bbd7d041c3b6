#pragma once

#include <QList>
#include <QStringList>
#include <optional>

namespace moorline {

/// The rules of the Icon Theme Specification, over plain records.

/// A folder of icons of one size, as its theme's index describes it.
struct IconFolder {
    enum class Type {
        /// Icons of exactly this size.
        fixed,
        /// Icons that are drawn at any size between the smallest and the largest.
        scalable,
        /// Icons that do for sizes a little off.
        threshold,
    };

    /// Below the theme's own folder, such as "48x48/apps".
    QString path;
    int size = 0;
    int scale = 1;
    Type type = Type::threshold;
    int smallest = 0;
    int largest = 0;
    int threshold = 2;

    bool operator==(const IconFolder &) const = default;
};

/// Whether the folder's icons are made for a size in points at a scale.
[[nodiscard]] bool isMadeFor(const IconFolder &folder, int size, int scale);

/// How far off the folder's icons are, in device pixels.
[[nodiscard]] int distance(const IconFolder &folder, int size, int scale);

/// Which folders to look into, best first, by their index: those that are made for it in the theme's order, then the
/// others from the nearest to the furthest.
[[nodiscard]] QList<qsizetype> lookupOrder(const QList<IconFolder> &folders, int size, int scale);

/// The name as themes know it: empty for what is no name but a path, or far too long. An extension that was left on
/// it, ".png", ".svg" or ".xpm", does not belong to it.
[[nodiscard]] QString iconName(const QString &written);

/// What a session says of its icons.
struct SessionThemeFacts {
    /// The name that the desktop tells every program; absent where none tells any.
    std::optional<QString> told;
    bool isKde = false;
    /// KDE's files of settings, the user's own before those of the system.
    QList<QByteArray> kdeSettings;
    /// The name in GNOME's settings; empty where these are not installed.
    QString gnomes;
};

/// The name of the session's theme: what is told, else in KDE's session what KDE's settings say, or KDE's own choice
/// where they are silent, and in any other what GNOME's do. Empty where nobody says.
[[nodiscard]] QString sessionIconTheme(const SessionThemeFacts &facts);

/// The theme to look into: the one the session asks for, if it is installed, else one that has icons for everything, if
/// there is any, else the one that is the fallback of all.
[[nodiscard]] QString usableTheme(const QString &wanted, const QStringList &installed);

} // namespace moorline
