#include "platform/linux/desktop/MountLooks.h"

#include "platform/qt/Background.h"

#include <QFile>
#include <QPointer>
#include <climits>
#include <deque>
#include <unistd.h>

namespace moorline {

namespace {

/// More links than any that lead somewhere.
constexpr int mostLinks = 40;

/// Empty for what is no link.
QByteArray linkTarget(const QByteArray &path)
{
    QByteArray target(PATH_MAX, Qt::Uninitialized);
    const ssize_t length = readlink(path.constData(), target.data(), size_t(target.size()));
    return length > 0 ? target.left(length) : QByteArray();
}

QByteArray parentOf(const QByteArray &path)
{
    return path.left(std::max<qsizetype>(path.lastIndexOf('/'), 0));
}

} // namespace

struct MountLooks::Queue {
    Background thread;
    /// The first is under way, unless it was given up.
    std::deque<Look> looks;
    std::unique_ptr<Clock::Timer> patience;
    /// When the look that is under way began, by the time since the start of the system.
    std::chrono::milliseconds began{};
    bool isSilent = false;

    [[nodiscard]] bool isIdle() const { return looks.empty() && !isSilent; }
};

MountLooks::MountLooks(Clock &clock, Table table, Patience patience)
    : m_clock(clock)
    , m_table(std::move(table))
    , m_patience(patience)
{
}

MountLooks::~MountLooks()
{
    for (const auto &[mount, queue] : m_queues) {
        if (!queue->looks.empty() && m_clock.uptime() - queue->began >= usualPatience)
            queue->thread.setAwaited(false);
    }
}

MountTable MountLooks::kernelMounts()
{
    QFile file(QStringLiteral("/proc/self/mountinfo"));
    return file.open(QIODevice::ReadOnly) ? MountTable::parse(file.readAll()) : MountTable();
}

void MountLooks::begin(Look look)
{
    const MountTable mounts = m_table();
    const Mount mount = mounts.at(look.path);
    Queue &queue = queueOf(mount, mounts);
    if (queue.isSilent) {
        QMetaObject::invokeMethod(
            this, [done = std::move(look.done)] { done(false); }, Qt::QueuedConnection);
        return;
    }
    queue.looks.push_back(std::move(look));
    if (queue.looks.size() == 1)
        next(mount.id);
}

MountLooks::Queue &MountLooks::queueOf(const Mount &mount, const MountTable &mounts)
{
    std::erase_if(m_queues, [&mounts](const auto &known) {
        const auto isIt = [id = known.first](const Mount &one) { return one.id == id; };
        return known.second->isIdle() && std::none_of(mounts.mounts().begin(), mounts.mounts().end(), isIt);
    });
    std::unique_ptr<Queue> &queue = m_queues[mount.id];
    if (!queue)
        queue = std::make_unique<Queue>();
    return *queue;
}

void MountLooks::next(quint64 mount)
{
    Queue &queue = *m_queues.at(mount);
    queue.began = m_clock.uptime();
    if (m_patience)
        queue.patience = m_clock.after(*m_patience, [this, mount] { giveUp(mount); });
    const Look &first = queue.looks.front();
    const auto look = [path = first.path, work = first.work, lastLink = first.lastLink, mounts = m_table()] {
        QByteArray further = pathBeyond(path, mounts.at(path), mounts, lastLink);
        if (further.isEmpty())
            work();
        return further;
    };
    queue.thread.run<QByteArray>(look, [this, mount](const QByteArray &further) { finish(mount, further); });
}

void MountLooks::finish(quint64 mount, const QByteArray &further)
{
    Queue &queue = *m_queues.at(mount);
    queue.patience.reset();
    if (std::exchange(queue.isSilent, false)) {
        queue.thread.setAwaited(true);
        Q_EMIT answeredAtLast();
        return;
    }
    Look look = std::move(queue.looks.front());
    queue.looks.pop_front();
    if (!queue.looks.empty())
        next(mount);
    if (further.isEmpty() || ++look.crossings > mostLinks)
        return look.done(further.isEmpty());
    look.path = further;
    begin(std::move(look));
}

void MountLooks::giveUp(quint64 mount)
{
    Queue &queue = *m_queues.at(mount);
    queue.patience.reset();
    queue.isSilent = true;
    queue.thread.setAwaited(false);
    const QPointer<MountLooks> alive(this);
    for (const Look &look : std::exchange(queue.looks, {})) {
        if (alive)
            look.done(false);
    }
}

QByteArray pathBeyond(
    const QByteArray &path, const Mount &mount, const MountTable &mounts, MountLooks::LastLink lastLink)
{
    const QByteArray top = mount.point == "/" ? QByteArray() : mount.point;
    QByteArray reached = top;
    QList<QByteArray> names = path.mid(top.size()).split('/');
    for (int links = 0; !names.isEmpty();) {
        const QByteArray name = names.takeFirst();
        if (name.isEmpty() || name == ".")
            continue;
        const QByteArray there = name == ".." ? parentOf(reached) : reached + '/' + name;
        if (mounts.at(there).id != mount.id)
            return (QList{there} + names).join('/');
        const bool isFollowed = name != ".." && (!names.isEmpty() || lastLink == MountLooks::LastLink::followed);
        const QByteArray target = isFollowed ? linkTarget(there) : QByteArray();
        if (target.isEmpty()) {
            reached = there;
            continue;
        }
        if (++links > mostLinks)
            return {};
        names = target.split('/') + names;
        if (!target.startsWith('/'))
            continue;
        // From the root, which may be another mount.
        QByteArray whole = names.join('/');
        if (mounts.at(whole).id != mount.id)
            return whole;
        reached = top;
        names = whole.mid(top.size()).split('/');
    }
    return {};
}

} // namespace moorline
