#pragma once

#include "support/IconThemes.h"

#include <QStringList>
#include <optional>

namespace moorline {

/// The icon themes that are installed, and the files in them. Used on one thread only, whichever.
class IconThemeFolders final {
public:
    /// The folders that hold themes, most important first: the user's own, then the system's.
    [[nodiscard]] static QStringList standardBases();

    explicit IconThemeFolders(QStringList bases = standardBases());

    /// Looks into this theme first, or into another where it is not installed. Then into those it inherits from.
    void setTheme(const QString &wanted);

    /// The file of the icon that comes nearest to a size in points at a scale, or nothing.
    [[nodiscard]] std::optional<QString> find(const QString &name, int size, int scale);

    /// Looks whether anything came, went or was written in the folders, and reads them anew if so.
    [[nodiscard]] bool refresh();

    /// The folders that exist, to be watched for changes.
    [[nodiscard]] QStringList watchable();

private:
    struct Theme {
        QList<IconFolder> folders;
        /// The places of each folder.
        QList<QStringList> places;
    };
    /// When a path last changed; absent while there is nothing.
    using Stamp = std::optional<qint64>;

    [[nodiscard]] QStringList installedThemes() const;
    void read();
    void readTheme(const QString &name, QStringList &seen);
    /// The folders that are there below the theme's roots, to be looked into.
    [[nodiscard]] Theme themeIn(const QStringList &roots, const QList<IconFolder> &folders);
    [[nodiscard]] std::optional<QString> findIn(const Theme &theme, const QString &name, int size, int scale) const;
    /// Whether the folder exists; from now on it is one of those looked at.
    bool visit(const QString &folder);
    /// The same for a folder in a theme. In place of one that is not there, the nearest above it is looked at: it
    /// changes when the other comes.
    bool visitBelow(const QString &root, const QString &folder);
    [[nodiscard]] static Stamp stamp(const QString &path);

    QStringList m_bases;
    QString m_wanted;
    bool m_isRead = false;
    /// In the order of lookup.
    QList<Theme> m_themes;
    QList<std::pair<QString, Stamp>> m_stamps;
};

} // namespace moorline
