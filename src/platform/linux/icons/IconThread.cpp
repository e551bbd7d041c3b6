#include "platform/linux/icons/IconThread.h"

#include <chrono>

namespace moorline {

namespace {

// A picture takes milliseconds. A disk that does not answer may take for ever.
constexpr std::chrono::milliseconds longestJoin{500};

} // namespace

IconThread::IconThread(const QStringList &bases)
    : m_thread(new QThread)
    , m_worker(new IconWorker(bases))
{
    m_thread->setObjectName(QStringLiteral("icons"));
    m_worker->moveToThread(m_thread);
    connect(m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    connect(m_worker, &IconWorker::answered, this, &IconThread::answered);
    connect(m_worker, &IconWorker::foldersTouched, this, &IconThread::foldersTouched);
    connect(m_worker, &IconWorker::iconsChanged, this, &IconThread::iconsChanged);
    m_thread->start(QThread::LowPriority);
}

IconThread::~IconThread()
{
    m_thread->quit();
    // One that is stuck is left to itself.
    if (m_thread->wait(QDeadlineTimer(longestJoin)))
        delete m_thread;
}

void IconThread::setTheme(const QString &name)
{
    QMetaObject::invokeMethod(m_worker, [worker = m_worker, name] { worker->setTheme(name); });
}

void IconThread::load(
    quint64 id, const IconRequest &request, const QStringList &fileIcons, const IconWorker::Abandoned &abandoned)
{
    QMetaObject::invokeMethod(m_worker,
        [worker = m_worker, id, request, fileIcons, abandoned] { worker->load(id, request, fileIcons, abandoned); });
}

void IconThread::refresh()
{
    QMetaObject::invokeMethod(m_worker, [worker = m_worker] { worker->refresh(); });
}

} // namespace moorline
