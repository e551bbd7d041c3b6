#include "platform/linux/desktop/PlainFiles.h"

#include "platform/linux/desktop/FolderReader.h"
#include "platform/linux/glib/GObjectPointer.h"
#include "support/FileUrls.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logFiles, "moorline.files", QtInfoMsg)

bool trash(const QByteArray &path)
{
    const GObjectPointer<GFile> file(g_file_new_for_path(path.constData()));
    GError *error = nullptr;
    if (g_file_trash(file.get(), nullptr, &error))
        return true;
    const GLibPointer<GError> owned(error);
    qCDebug(logFiles) << "not thrown away:" << path << (owned ? owned->message : "");
    return false;
}

} // namespace

QString PlainFiles::displayName(const QString &path) const
{
    const QString last = path.section(u'/', -1, -1, QString::SectionSkipEmpty);
    return last.isEmpty() ? path.left(1) : last;
}

bool PlainFiles::exists(const QString &path) const
{
    return QFileInfo::exists(path);
}

void PlainFiles::list(const QString &folder, Choose choose, Listed listed)
{
    using Found = std::optional<QList<FolderEntry>>;
    const auto read = [path = QFile::encodeName(folder), choose = std::move(choose)]() -> Found {
        Found found = readFolder(path);
        return found ? Found(choose(std::move(*found))) : std::nullopt;
    };
    m_reading.run<Found>(read, std::move(listed));
}

void PlainFiles::moveToTrash(const QUrl &file, Trashed trashed)
{
    m_trashing.run<bool>([path = pathBytes(file)] { return trash(path); }, std::move(trashed));
}

} // namespace moorline
