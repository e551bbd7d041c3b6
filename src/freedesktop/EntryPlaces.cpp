#include "freedesktop/EntryPlaces.h"

#include <QDir>

namespace moorline {

namespace {

const QLatin1StringView applications("/applications");

/// Those that are no absolute paths are to be ignored.
QStringList absoluteFolders(const QString &list, const QStringList &fallback)
{
    QStringList folders;
    const QStringList named = list.split(u':', Qt::SkipEmptyParts);
    for (const QString &folder : named) {
        if (QDir::isAbsolutePath(folder))
            folders.append(QDir::cleanPath(folder));
    }
    return folders.isEmpty() ? fallback : folders;
}

QStringList below(const QStringList &folders, QLatin1StringView name)
{
    QStringList paths;
    for (const QString &folder : folders)
        paths.append(folder + name);
    return paths;
}

QStringList mimeLists(const QStringList &folders, const QStringList &desktopNames)
{
    QStringList lists;
    for (const QString &folder : folders) {
        for (const QString &desktop : desktopNames)
            lists.append(folder + u'/' + desktop.toLower() + QLatin1StringView("-mimeapps.list"));
        lists.append(folder + QLatin1StringView("/mimeapps.list"));
    }
    return lists;
}

} // namespace

EntryPlaces entryPlaces(const std::function<QString(const char *name)> &variable, const QString &home)
{
    const auto folders = [&](const char *name, const QStringList &fallback) {
        return absoluteFolders(variable(name), fallback);
    };
    const QString dataHome = folders("XDG_DATA_HOME", {home + QLatin1StringView("/.local/share")}).first();
    const QString configHome = folders("XDG_CONFIG_HOME", {home + QLatin1StringView("/.config")}).first();
    QStringList data{dataHome};
    QStringList system = folders("XDG_DATA_DIRS", {QStringLiteral("/usr/local/share"), QStringLiteral("/usr/share")});
    // Where the session was told of it, it says itself how much it counts.
    const QString ownFlatpaks = dataHome + QLatin1StringView("/flatpak/exports/share");
    if (!system.contains(ownFlatpaks))
        data.append(ownFlatpaks);
    data += system;
    data += {QStringLiteral("/var/lib/flatpak/exports/share"), QStringLiteral("/var/lib/snapd/desktop")};
    data.removeDuplicates();
    const QStringList entries = below(data, applications);
    const QStringList desktopNames = variable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    const QStringList config = QStringList(configHome) + folders("XDG_CONFIG_DIRS", {QStringLiteral("/etc/xdg")});
    return {.folders = entries, .mimeLists = mimeLists(config + entries, desktopNames), .desktopNames = desktopNames};
}

QString entryId(const QString &path, const QStringList &folders)
{
    QString id = path.section(u'/', -1);
    for (const QString &folder : folders) {
        if (path.startsWith(folder + u'/')) {
            id = path.mid(folder.size() + 1).replace(u'/', u'-');
            break;
        }
    }
    const QLatin1StringView suffix(".desktop");
    return id.endsWith(suffix) ? id.chopped(suffix.size()) : id;
}

} // namespace moorline
