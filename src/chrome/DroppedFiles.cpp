#include "chrome/DroppedFiles.h"

#include <QMimeData>
#include <algorithm>

namespace moorline {

bool mayHoldFiles(const QStringList &formats)
{
    return formats.contains(QStringLiteral("text/uri-list"));
}

QList<QUrl> loadDroppedFileURLs(const QMimeData &dropped)
{
    QList<QUrl> files;
    const QList<QUrl> urls = dropped.urls();
    std::copy_if(
        urls.begin(), urls.end(), std::back_inserter(files), [](const QUrl &url) { return url.isLocalFile(); });
    return files;
}

} // namespace moorline
