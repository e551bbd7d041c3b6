#include "platform/FilePresence.h"

#include <algorithm>
#include <utility>

namespace moorline {

FilePresence::FilePresence(FileWatch &watch, Exists exists)
    : m_watch(watch)
    , m_exists(std::move(exists))
{
}

void FilePresence::follow(const QString &path)
{
    const auto known = std::find_if(
        m_followed.begin(), m_followed.end(), [&path](const Followed &followed) { return followed.path == path; });
    if (known != m_followed.end()) {
        m_followed.splice(m_followed.begin(), m_followed, known);
        return;
    }
    Followed &followed = m_followed.emplace_front(Followed{.path = path, .watch = nullptr});
    // Before it is looked at: what happens meanwhile is told of.
    followed.watch = m_watch.watch(path, [this, &followed] { look(followed); });
    followed.isThere = m_exists(path);
    if (m_followed.size() > mostFollowed)
        m_followed.pop_back();
}

void FilePresence::look(Followed &followed)
{
    const bool isThere = m_exists(followed.path);
    if (std::exchange(followed.isThere, isThere) != isThere)
        tellSoon();
}

void FilePresence::tellSoon()
{
    if (std::exchange(m_isTelling, true))
        return;
    const auto tell = [this] {
        m_isTelling = false;
        Q_EMIT changed();
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

} // namespace moorline
