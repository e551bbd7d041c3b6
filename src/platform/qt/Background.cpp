#include "platform/qt/Background.h"

#include <QMutex>
#include <QThreadPool>

namespace moorline {

namespace {

// A disk that does not answer may take for ever.
constexpr int longestJoinMilliseconds = 500;

} // namespace

struct Background::Door {
    QMutex mutex;
    /// Null once it is closed.
    QObject *home;
};

Background::Background(int threads)
    : m_pool(new QThreadPool)
    , m_home(std::make_unique<QObject>())
    , m_door(new Door{.mutex = {}, .home = m_home.get()})
{
    m_pool->setMaxThreadCount(threads);
}

Background::~Background()
{
    m_pool->clear();
    {
        const QMutexLocker lock(&m_door->mutex);
        m_door->home = nullptr;
    }
    if (m_pool->waitForDone(m_isAwaited ? longestJoinMilliseconds : 0))
        delete m_pool;
}

void Background::start(std::function<void()> work)
{
    m_pool->start(std::move(work));
}

void Background::report(Door &door, std::function<void()> done)
{
    const QMutexLocker lock(&door.mutex);
    if (door.home)
        QMetaObject::invokeMethod(door.home, std::move(done), Qt::QueuedConnection);
}

} // namespace moorline
