#include "platform/qt/QtFileWatch.h"

#include <QFileInfo>
#include <QFileSystemWatcher>

namespace moorline {

namespace {

/// The file and its folder: what is written in place is seen at the file, what is put in its place at the folder. For a
/// link both ends.
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
    void report()
    {
        // A file that was replaced is another file, and no longer watched.
        follow();
        m_changed();
    }

    void follow()
    {
        const QFileInfo file(m_path);
        const QString target = file.isSymLink() ? file.symLinkTarget() : m_path;
        for (const QString &path : {m_path, file.path(), target, QFileInfo(target).path()}) {
            if (QFileInfo::exists(path) && !isWatched(path))
                m_watcher.addPath(path);
        }
    }

    [[nodiscard]] bool isWatched(const QString &path) const
    {
        return m_watcher.files().contains(path) || m_watcher.directories().contains(path);
    }

    QString m_path;
    FileWatch::Callback m_changed;
    QFileSystemWatcher m_watcher;
};

} // namespace

std::unique_ptr<FileWatch::Watch> QtFileWatch::watch(const QString &path, Callback changed)
{
    return std::make_unique<WatchedFile>(path, std::move(changed));
}

} // namespace moorline
