#include "platform/linux/apps/FolderEvents.h"

#include <QFile>
#include <QFileInfo>
#include <array>
#include <sys/inotify.h>

namespace moorline {

namespace {

constexpr quint32 watchedEvents =
    IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

/// The end of what was watched, or of knowing what happens.
constexpr quint32 endings = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_Q_OVERFLOW;

} // namespace

FolderEvents::FolderEvents()
    : m_descriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
{
}

bool FolderEvents::watch(const QString &folder, const std::function<void(Place &)> &note)
{
    if (!m_descriptor.isOpen())
        return false;
    // A disk that hangs holds up no other thread.
    const int place = inotify_add_watch(m_descriptor.get(), QFile::encodeName(folder).constData(), watchedEvents);
    if (place < 0)
        return false;
    const QMutexLocker lock(&m_mutex);
    note(m_places[place]);
    return true;
}

void FolderEvents::watchEntries(const QString &folder)
{
    // Before the folder itself: it may come meanwhile.
    watchFile(folder);
    static_cast<void>(watch(folder, [](Place &place) { place.hasEntries = true; }));
}

void FolderEvents::watchFile(const QString &path)
{
    const QFileInfo file(path);
    const bool isWatched = watch(file.path(), [&file](Place &place) { place.names.insert(file.fileName()); });
    if (!isWatched && file.path() != path)
        watchFile(file.path());
}

bool FolderEvents::takeNews()
{
    bool isAnyNews = false;
    constexpr std::size_t bufferSize = 4096;
    alignas(inotify_event) std::array<char, bufferSize> buffer;
    for (;;) {
        const ssize_t length = ::read(m_descriptor.get(), buffer.data(), buffer.size());
        if (length <= 0)
            return isAnyNews;
        for (ssize_t at = 0; at < length;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer.data() + at);
            const QString name = event->len > 0 ? QFile::decodeName(event->name) : QString();
            isAnyNews |= isNews(event->wd, event->mask, name);
            at += ssize_t(sizeof(inotify_event)) + event->len;
        }
    }
}

bool FolderEvents::isNews(int place, quint32 what, const QString &name) const
{
    if ((what & endings) != 0)
        return true;
    const QMutexLocker lock(&m_mutex);
    const auto known = m_places.constFind(place);
    if (known == m_places.constEnd())
        return false;
    if (known->hasEntries && ((what & IN_ISDIR) != 0 || name.endsWith(QLatin1StringView(".desktop"))))
        return true;
    return known->names.contains(name);
}

} // namespace moorline
