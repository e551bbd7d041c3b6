#include "platform/linux/desktop/DesktopEntries.h"

#include "platform/linux/desktop/DesktopEntryFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace moorline {

namespace {

/// The path inside the first applications folder that holds the entry, otherwise its name.
QString pathInApplications(const QString &path)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    const auto folders = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    for (const QString &folder : folders) {
        const QString prefix = QDir::cleanPath(folder) + u'/';
        if (absolute.startsWith(prefix))
            return absolute.mid(prefix.size());
    }
    return QFileInfo(absolute).fileName();
}

QString identifier(const QString &path)
{
    QString id = pathInApplications(path);
    id.replace(u'/', u'-');
    const QString suffix = QStringLiteral(".desktop");
    if (id.endsWith(suffix))
        id.chop(suffix.size());
    return id;
}

} // namespace

QString DesktopEntries::applicationExtension() const
{
    return QStringLiteral("desktop");
}

std::optional<BundleInfo> DesktopEntries::info(const QString &path) const
{
    const auto entry = DesktopEntryFile::open(path);
    if (!entry)
        return std::nullopt;
    BundleInfo info;
    info.identifier = identifier(path);
    info.displayName = entry->localisedText(G_KEY_FILE_DESKTOP_KEY_NAME);
    if (!info.displayName)
        info.name = entry->localisedText(G_KEY_FILE_DESKTOP_KEY_GENERIC_NAME);
    return info;
}

} // namespace moorline
