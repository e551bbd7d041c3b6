#include "platform/linux/apps/FileOpener.h"

#include "platform/linux/apps/AppStarter.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/glib/GObjectPointer.h"
#include "support/FileUrls.h"

#include <QLoggingCategory>
#include <QMimeDatabase>
#include <QPointer>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logOpen, "moorline.apps.open", QtInfoMsg)

const QString folderType = QStringLiteral("inode/directory");
/// Every file is of this kind, and whoever opens it opens none well.
const QString anyType = QStringLiteral("application/octet-stream");

} // namespace

FileOpener::FileOpener(DesktopEntries &entries, AppStarter &starter, Clock &clock)
    : m_entries(entries)
    , m_starter(starter)
    , m_looks(clock)
{
}

void FileOpener::open(const QUrl &file)
{
    const QByteArray path = pathBytes(file);
    m_looks.run<QStringList>(
        path, [path] { return fileTypes(path); },
        [this, file](const std::optional<QStringList> &types) { openAs(file, types.value_or(QStringList())); });
}

void FileOpener::openAs(const QUrl &file, const QStringList &types)
{
    if (types.contains(folderType))
        return m_starter.showFolder(file, nullptr);
    m_entries.whenLoaded([alive = QPointer(this), file, types] {
        if (alive)
            alive->search(file, types);
    });
}

void FileOpener::search(const QUrl &file, const QStringList &types)
{
    using Found = std::optional<QString>;
    m_searching.run<Found>([types, known = m_entries.catalogue()->records(),
                               places = m_entries.places()] { return handlerPath(types, known, places); },
        [this, file, types](const Found &handler) {
            if (handler)
                m_starter.open(*handler, {file}, {});
            else
                qCDebug(logOpen) << "nobody opens" << file << types;
        });
}

QStringList fileTypes(const QByteArray &path)
{
    const GObjectPointer<GFile> file(g_file_new_for_path(path.constData()));
    const GObjectPointer<GFileInfo> info(g_file_query_info(
        file.get(), G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE, G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    const char *type = info ? g_file_info_get_content_type(info.get()) : nullptr;
    if (!type)
        return {};
    const QString name = QString::fromUtf8(type);
    QStringList types = QStringList(name) + QMimeDatabase().mimeTypeForName(name).allAncestors();
    types.removeAll(anyType);
    return types;
}

} // namespace moorline
