#include "platform/linux/apps/LinuxTrashBin.h"

#include "freedesktop/TrashPlaces.h"
#include "platform/linux/apps/AppStarter.h"
#include "platform/linux/desktop/FolderReader.h"
#include "platform/linux/glib/GObjectPointer.h"
#include "support/FileUrls.h"

#include <QFile>
#include <cerrno>
#include <gio/gunixmounts.h>
#include <sys/stat.h>
#include <unistd.h>

namespace moorline {

namespace {

constexpr auto trashAddress = "trash:///";

bool isTrusted(const QByteArray &shared)
{
    struct stat facts { };
    return shared.isEmpty()
        || (lstat(shared.constData(), &facts) == 0 && S_ISDIR(facts.st_mode) && (facts.st_mode & S_ISVTX));
}

bool isFilled(const TrashPlace &place)
{
    return isTrusted(place.shared) && isFolderFilled(place.folder + "/files");
}

/// With whatever it lies in. For the user alone, as the trash is to be. Whether it is there.
bool makeFolder(const QByteArray &path)
{
    for (qsizetype end = path.indexOf('/', 1); end >= 0; end = path.indexOf('/', end + 1))
        mkdir(path.left(end).constData(), S_IRWXU);
    return mkdir(path.constData(), S_IRWXU) == 0 || errno == EEXIST;
}

} // namespace

LinuxTrashBin::LinuxTrashBin(Context context)
    : m_context(std::move(context))
    , m_looks(m_context.clock)
{
}

void LinuxTrashBin::look(Looked looked)
{
    // What a look that has begun saw may be older than the question.
    m_next.append(std::move(looked));
    if (m_waiting.isEmpty())
        begin();
}

void LinuxTrashBin::begin()
{
    m_waiting = std::exchange(m_next, {});
    // One that does not come back is not asked again.
    if (m_isCounting)
        return lookIntoFolders();
    m_isCounting = true;
    m_patience = m_context.clock.after(longestCount, [this] { lookIntoFolders(); });
    m_counting.run<std::optional<quint32>>(m_context.count, [this](const auto &count) { counted(count); });
}

void LinuxTrashBin::counted(const std::optional<quint32> &count)
{
    m_isCounting = false;
    m_isServed = count.has_value();
    // Nobody waits for what came too late.
    if (!std::exchange(m_patience, nullptr))
        return;
    if (count)
        tell(*count > 0);
    else
        lookIntoFolders();
}

void LinuxTrashBin::lookIntoFolders()
{
    m_patience.reset();
    const QByteArray home = QFile::encodeName(m_context.homeTrash);
    const QList<TrashPlace> places = trashPlaces(home, m_context.volumes(), getuid());
    m_unseen = places.size();
    m_isAnyFilled = false;
    for (const TrashPlace &place : places) {
        m_looks.run<bool>(
            place.folder, [place] { return isFilled(place); },
            [this, folder = place.folder](const std::optional<bool> &answer) { looked(folder, answer); });
    }
}

void LinuxTrashBin::looked(const QByteArray &folder, const std::optional<bool> &isFilled)
{
    if (isFilled)
        m_filled.insert(folder, *isFilled);
    m_isAnyFilled |= m_filled.value(folder);
    if (--m_unseen == 0)
        tell(m_isAnyFilled);
}

void LinuxTrashBin::tell(bool isFull)
{
    for (const Looked &looked : std::exchange(m_waiting, {}))
        looked(isFull);
    if (m_waiting.isEmpty() && !m_next.isEmpty())
        begin();
}

void LinuxTrashBin::open()
{
    if (m_isServed)
        return m_context.starter.showFolder(QUrl(QString::fromLatin1(trashAddress)), nullptr);
    const QByteArray own = QFile::encodeName(m_context.homeTrash + QStringLiteral("/files"));
    m_looks.run<bool>(
        own, [own] { return makeFolder(own); },
        [this, own](const std::optional<bool> &) { m_context.starter.showFolder(fileUrl(own), nullptr); });
}

std::optional<quint32> countOfTrash()
{
    const GObjectPointer<GFile> trash(g_file_new_for_uri(trashAddress));
    const GObjectPointer<GFileInfo> info(
        g_file_query_info(trash.get(), G_FILE_ATTRIBUTE_TRASH_ITEM_COUNT, G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    if (!info || !g_file_info_has_attribute(info.get(), G_FILE_ATTRIBUTE_TRASH_ITEM_COUNT))
        return std::nullopt;
    return g_file_info_get_attribute_uint32(info.get(), G_FILE_ATTRIBUTE_TRASH_ITEM_COUNT);
}

QList<QByteArray> mountedVolumes()
{
    struct MountReleaser {
        void operator()(GUnixMountEntry *mount) const { g_unix_mount_free(mount); }
    };
    QList<QByteArray> paths;
    const GLibPointer<GList> mounts(g_unix_mounts_get(nullptr));
    for (const GList *one = mounts.get(); one; one = one->next) {
        const std::unique_ptr<GUnixMountEntry, MountReleaser> mount(static_cast<GUnixMountEntry *>(one->data));
        // What the system mounts for itself is no place for anybody's files; that goes for none but the root.
        const QByteArray path(g_unix_mount_get_mount_path(mount.get()));
        if (path == "/" || !g_unix_mount_is_system_internal(mount.get()))
            paths.append(path);
    }
    return paths;
}

} // namespace moorline
