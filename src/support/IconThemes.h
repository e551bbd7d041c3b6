#pragma once

#include <QList>
#include <QStringList>

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

/// The theme to look into: the one the session asks for, if it is installed, else one that has icons for everything, if
/// there is any, else the one that is the fallback of all.
[[nodiscard]] QString usableTheme(const QString &wanted, const QStringList &installed);

} // namespace moorline
