#include "platform/qt/QtFileWatch.h"

#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QHash>
#include <QSet>
#include <optional>
#include <sys/stat.h>

namespace moorline {

namespace {

/// Far more links than any that lead from one to the next, for those that lead in a circle.
constexpr int mostLinks = 40;

/// Tells one file from another that takes its name.
struct Identity {
    dev_t device;
    ino_t number;

    bool operator==(const Identity &) const = default;
};

std::optional<Identity> identityOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return Identity{status.st_dev, status.st_ino};
}

QString folderOf(const QString &path)
{
    return QFileInfo(path).path();
}

QString nearestExisting(QString path)
{
    while (!QFileInfo::exists(path) && folderOf(path) != path)
        path = folderOf(path);
    return path;
}

/// Where something may happen to a file. What is written in place is seen at the file, what is put in its place at its
/// folder, and what becomes of the folder at the one above. For a link, each of them at both ends.
class Surroundings final {
public:
    explicit Surroundings(const QString &file)
    {
        QString path = file;
        for (int links = 0; links < mostLinks; ++links) {
            m_near.insert(path);
            addFolder(folderOf(path));
            const QFileInfo info(path);
            if (!info.isSymLink())
                break;
            path = info.symLinkTarget();
        }
        m_all = m_near + m_above;
    }

    /// What happens there happens to the file.
    [[nodiscard]] const QSet<QString> &near() const { return m_near; }
    [[nodiscard]] const QSet<QString> &all() const { return m_all; }

private:
    void addFolder(QString path)
    {
        for (int links = 0; links < mostLinks; ++links) {
            m_near.insert(path);
            m_above.insert(nearestExisting(folderOf(path)));
            const QFileInfo info(path);
            if (!info.isSymLink())
                break;
            path = info.symLinkTarget();
        }
    }

    QSet<QString> m_near;
    QSet<QString> m_above;
    QSet<QString> m_all;
};

class WatchedFile final : public QObject, public FileWatch::Watch {
public:
    WatchedFile(QString path, FileWatch::Callback changed)
        : m_path(std::move(path))
        , m_changed(std::move(changed))
    {
        connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &WatchedFile::report);
        connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &WatchedFile::report);
        follow();
    }

private:
    void report(const QString &place)
    {
        const bool isNear = m_near.contains(place);
        // A file that was replaced is another file, and no longer watched.
        if (follow() || isNear)
            m_changed();
    }

    /// Watches all there is around the file now. Whether any of it is not what it was.
    bool follow()
    {
        bool isOther = false;
        // What came into a folder before that was watched was not seen.
        for (int round = 0; round < mostLinks && followOnce(); ++round)
            isOther = true;
        return isOther;
    }

    bool followOnce()
    {
        const Surroundings surroundings(m_path);
        m_near = surroundings.near();
        bool isOther = false;
        const QStringList watched = m_watched.keys();
        for (const QString &path : watched)
            isOther |= !surroundings.all().contains(path) && setWatched(path, std::nullopt);
        for (const QString &path : surroundings.all())
            isOther |= setWatched(path, identityOf(path));
        return isOther;
    }

    /// Whether that is news. A file that is gone is no longer watched, whatever happens to it elsewhere.
    bool setWatched(const QString &path, const std::optional<Identity> &identity)
    {
        const auto known = m_watched.constFind(path);
        const bool wasWatched = known != m_watched.constEnd();
        if (wasWatched ? *known == identity && isWatched(path) : !identity)
            return false;
        m_watcher.removePath(path);
        m_watched.remove(path);
        if (identity && m_watcher.addPath(path))
            m_watched.insert(path, *identity);
        return wasWatched || m_watched.contains(path);
    }

    [[nodiscard]] bool isWatched(const QString &path) const
    {
        return m_watcher.files().contains(path) || m_watcher.directories().contains(path);
    }

    QString m_path;
    FileWatch::Callback m_changed;
    QFileSystemWatcher m_watcher;
    QHash<QString, Identity> m_watched;
    QSet<QString> m_near;
};

} // namespace

std::unique_ptr<FileWatch::Watch> QtFileWatch::watch(const QString &path, Callback changed)
{
    return std::make_unique<WatchedFile>(path, std::move(changed));
}

} // namespace moorline
