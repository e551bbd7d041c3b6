#include "files/RecentDownloads.h"

#include "support/FileUrls.h"

#include <QFile>
#include <algorithm>

namespace moorline {

namespace {

FolderEntry::Time dateOf(const FolderEntry &entry)
{
    return entry.added.value_or(entry.modified.value_or(FolderEntry::Time::min()));
}

} // namespace

QList<FolderEntry> newest(QList<FolderEntry> entries)
{
    entries.removeIf([](const FolderEntry &entry) { return entry.isHidden; });
    std::stable_sort(entries.begin(), entries.end(),
        [](const FolderEntry &left, const FolderEntry &right) { return dateOf(left) > dateOf(right); });
    return entries.mid(0, mostRecentDownloads);
}

QList<QUrl> urlsIn(const QString &folder, const QList<FolderEntry> &entries)
{
    const QByteArray path = QFile::encodeName(folder) + '/';
    QList<QUrl> urls;
    for (const FolderEntry &entry : entries)
        urls.append(fileUrl(path + entry.name));
    return urls;
}

} // namespace moorline
