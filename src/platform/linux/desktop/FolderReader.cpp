#include "platform/linux/desktop/FolderReader.h"

#include "freedesktop/AddedDate.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace moorline {

namespace {

struct Closer {
    void operator()(DIR *folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, Closer>;

/// Null at the end, and where something went wrong: errno tells.
const dirent *nextOf(const OpenFolder &folder)
{
    for (;;) {
        errno = 0;
        const dirent *found = readdir(folder.get());
        const QByteArrayView name = found ? QByteArrayView(found->d_name) : QByteArrayView();
        if (!found || (name != "." && name != ".."))
            return found;
    }
}

FileTimes::Time timeOf(const statx_timestamp &stamp)
{
    const auto time = std::chrono::seconds(stamp.tv_sec) + std::chrono::nanoseconds(stamp.tv_nsec);
    return FileTimes::Time(std::chrono::floor<std::chrono::milliseconds>(time));
}

/// False when it is gone.
bool addTimes(FolderEntry &entry, int folder)
{
    struct statx facts { };
    constexpr unsigned wanted = STATX_BTIME | STATX_MTIME | STATX_CTIME;
    if (statx(folder, entry.name.constData(), AT_SYMLINK_NOFOLLOW | AT_STATX_DONT_SYNC, wanted, &facts) != 0)
        return errno != ENOENT;
    FileTimes times{.modified = timeOf(facts.stx_mtime), .changed = timeOf(facts.stx_ctime)};
    if (facts.stx_mask & STATX_BTIME)
        times.birth = timeOf(facts.stx_btime);
    entry.added = addedDate(times);
    entry.modified = times.modified;
    return true;
}

} // namespace

std::optional<QList<FolderEntry>> readFolder(const QByteArray &path)
{
    const OpenFolder folder(opendir(path.constData()));
    if (!folder)
        return std::nullopt;
    QList<FolderEntry> entries;
    while (const dirent *found = nextOf(folder)) {
        const QByteArray name(found->d_name);
        FolderEntry entry{.name = name, .isHidden = name.startsWith('.')};
        if (addTimes(entry, dirfd(folder.get())))
            entries.append(entry);
    }
    return errno == 0 ? std::optional(std::move(entries)) : std::nullopt;
}

bool isFolderFilled(const QByteArray &path)
{
    const OpenFolder folder(opendir(path.constData()));
    return folder && nextOf(folder);
}

} // namespace moorline
