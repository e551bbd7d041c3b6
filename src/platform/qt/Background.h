#pragma once

#include <QObject>
#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QThreadPool;
QT_END_NAMESPACE

namespace moorline {

/// Does what may have to wait for a disk on threads of its own: what was asked first begins first, and with one thread
/// one thing is done after the other. The threads end when there is nothing to do for a while.
class Background final {
public:
    /// `threads` is how many things may be under way at once, and so how many of them, less one, may be stuck before
    /// the next has to wait. What is done at once may end in any order.
    explicit Background(int threads = 1);
    /// What has not begun is not done, and nobody is told any more. Work that is stuck is left to itself.
    ~Background();
    Q_DISABLE_COPY_MOVE(Background)

    /// Whether the end waits a moment for what is under way, as it does unless that is known to be stuck.
    void setAwaited(bool isAwaited) { m_isAwaited = isAwaited; }

    /// `done` is called from the event loop of the thread that this lives on, with what `work` answered.
    template <typename Result>
    void run(std::function<Result()> work, std::function<void(const Result &)> done)
    {
        start([door = m_door, work = std::move(work), done = std::move(done)] {
            report(*door, [result = work(), done] { done(result); });
        });
    }

private:
    /// Through which results come home, as long as it is open.
    struct Door;

    void start(std::function<void()> work);
    static void report(Door &door, std::function<void()> done);

    QThreadPool *m_pool;
    /// Lives on the thread of whoever asks. What is on its way to it goes with it.
    std::unique_ptr<QObject> m_home;
    std::shared_ptr<Door> m_door;
    bool m_isAwaited = true;
};

} // namespace moorline
