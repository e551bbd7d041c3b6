#include "platform/linux/icons/FileKinds.h"

#include "platform/linux/glib/GObjectPointer.h"

#include <QFile>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <gio/gio.h>
#include <sys/inotify.h>

namespace moorline {

namespace {

constexpr quint32 watchedEvents =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

/// The end of what was watched, or of knowing what happens.
constexpr quint32 endings = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_Q_OVERFLOW;

} // namespace

QStringList iconNamesOfFile(const QByteArray &path)
{
    const GObjectPointer<GFile> file(g_file_new_for_path(path.constData()));
    const GObjectPointer<GFileInfo> info(
        g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_ICON, G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    GIcon *icon = info ? g_file_info_get_icon(info.get()) : nullptr;
    QStringList names;
    if (!G_IS_THEMED_ICON(icon))
        return names;
    for (const gchar *const *name = g_themed_icon_get_names(G_THEMED_ICON(icon)); name && *name; ++name)
        names.append(QString::fromUtf8(*name));
    // Those for a single colour nobody asked for.
    names.removeIf([](const QString &name) { return name.endsWith(QLatin1StringView("-symbolic")); });
    return names;
}

FileKinds::FileKinds(Clock &clock, MountLooks::Table mounts)
    : m_clock(clock)
    , m_looks(clock, std::move(mounts))
    , m_mountTable(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC))
{
    connect(&m_looks, &MountLooks::answeredAtLast, this, &FileKinds::note);
    listen();
    if (!m_mountTable.isOpen())
        return;
    // The kernel tells so of a table that is another now.
    m_mountNotifier = std::make_unique<QSocketNotifier>(m_mountTable.get(), QSocketNotifier::Exception);
    connect(m_mountNotifier.get(), &QSocketNotifier::activated, this, &FileKinds::note);
}

void FileKinds::listen()
{
    m_events = std::make_shared<FileDescriptor>(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    if (!m_events->isOpen())
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_events->get(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &FileKinds::readEvents);
}

void FileKinds::find(const QString &path, Answer answer)
{
    const QByteArray bytes = QFile::encodeName(path);
    m_looks.run<Found>(
        bytes, [bytes, events = m_events] { return look(events->get(), bytes); },
        [this, events = m_events, answer = std::move(answer)](const std::optional<Found> &found) {
            if (found && events == m_events)
                follow(*found);
            answer(found ? found->names : QStringList());
        });
}

FileKinds::Found FileKinds::look(int events, const QByteArray &path)
{
    Found found;
    // Before the file itself: it may come meanwhile. Where its folder is not there, the folder is what may come.
    for (QByteArray there = path; found.folder < 0 && there.size() > 1;) {
        const qsizetype end = there.lastIndexOf('/');
        found.name = there.mid(end + 1);
        there = there.left(std::max<qsizetype>(end, 1));
        found.folder = inotify_add_watch(events, there.constData(), watchedEvents);
        if (found.folder < 0 && errno != ENOENT && errno != ENOTDIR)
            break;
    }
    found.names = iconNamesOfFile(path);
    return found;
}

void FileKinds::follow(const Found &found)
{
    if (found.folder < 0)
        return;
    QSet<QByteArray> &names = m_followed[found.folder];
    if (names.contains(found.name))
        return;
    names.insert(found.name);
    if (++m_count > mostFollowed)
        startAnew();
}

void FileKinds::startAnew()
{
    m_followed.clear();
    m_count = 0;
    m_notifier.reset();
    listen();
    // Whatever is still shown is asked for again, and followed.
    note();
}

void FileKinds::readEvents()
{
    constexpr std::size_t bufferSize = 4096;
    alignas(inotify_event) std::array<char, bufferSize> buffer;
    for (;;) {
        const ssize_t length = ::read(m_events->get(), buffer.data(), buffer.size());
        if (length <= 0)
            return;
        for (ssize_t at = 0; at < length;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer.data() + at);
            const QByteArray name = event->len > 0 ? QByteArray(event->name) : QByteArray();
            const auto folder = m_followed.constFind(event->wd);
            const bool isKnown = folder != m_followed.constEnd();
            // Of a folder that nobody has told of yet, anything may be about the file.
            if ((event->mask & endings) != 0 || (isKnown ? folder->contains(name) : !name.isEmpty()))
                note();
            if ((event->mask & IN_IGNORED) != 0 && isKnown)
                m_count -= m_followed.take(event->wd).size();
            at += ssize_t(sizeof(inotify_event)) + event->len;
        }
    }
}

void FileKinds::note()
{
    if (m_pause)
        return;
    m_pause = m_clock.after(pauseBetweenNews, [this] {
        m_pause.reset();
        Q_EMIT changed();
    });
}

} // namespace moorline
