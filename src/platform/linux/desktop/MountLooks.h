#pragma once

#include "freedesktop/MountTable.h"
#include "platform/Clock.h"

#include <QObject>
#include <map>
#include <optional>

namespace moorline {

/// Looks at files where a disk or a network may not answer. Every mount is looked at on a thread of its own, one look
/// after the other: one that hangs keeps nobody from the others, and, where it is given up, holds one look and no more.
class MountLooks final : public QObject {
    Q_OBJECT
public:
    /// How long a mount may take for one look. Absent: as long as it likes.
    using Patience = std::optional<std::chrono::milliseconds>;
    static constexpr std::chrono::seconds usualPatience{2};

    using Table = std::function<MountTable()>;

    /// `table` tells what is mounted where, and waits for no disk.
    explicit MountLooks(Clock &clock, Table table = kernelMounts, Patience patience = usualPatience);
    /// What hangs is left to itself.
    ~MountLooks() override;

    /// What the kernel says.
    [[nodiscard]] static MountTable kernelMounts();

    /// Whether what is at a path that names a link is what the link leads to, or the link.
    enum class LastLink { followed, itself };

    /// `work` looks at what is at `path`, on another thread. `done` is called once, from the event loop, with what it
    /// answered: with nothing when the mount was silent for too long, and at once while it still is.
    template <typename Result>
    void run(const QByteArray &path, std::function<Result()> work,
        std::function<void(const std::optional<Result> &)> done, LastLink lastLink = LastLink::followed)
    {
        const auto answer = std::make_shared<std::optional<Result>>();
        begin({.path = path,
            .work = [answer, work = std::move(work)] { *answer = work(); },
            .done = [answer, done = std::move(done)](bool isAnswered) { done(isAnswered ? *answer : std::nullopt); },
            .lastLink = lastLink});
    }

Q_SIGNALS:
    /// A mount that was silent is not any more: what was not answered is worth another look.
    void answeredAtLast();

private:
    struct Look {
        QByteArray path;
        std::function<void()> work;
        std::function<void(bool isAnswered)> done;
        LastLink lastLink = LastLink::followed;
        /// How many links to other mounts led here.
        int crossings = 0;
    };
    struct Queue;

    void begin(Look look);
    [[nodiscard]] Queue &queueOf(const Mount &mount, const MountTable &mounts);
    void next(quint64 mount);
    void finish(quint64 mount, const QByteArray &further);
    void giveUp(quint64 mount);

    Clock &m_clock;
    Table m_table;
    Patience m_patience;
    /// By the numbers of the mounts.
    std::map<quint64, std::unique_ptr<Queue>> m_queues;
};

/// Where a path leaves the mount that its words are on, over a link: what lies there, in words that are on another one.
/// Empty when it does not. It may wait for that mount, and for no other.
[[nodiscard]] QByteArray pathBeyond(const QByteArray &path, const Mount &mount, const MountTable &mounts,
    MountLooks::LastLink lastLink = MountLooks::LastLink::followed);

} // namespace moorline
