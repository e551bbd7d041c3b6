#include "platform/qt/HttpThread.h"

#include "platform/qt/HttpWorker.h"

#include <QUrl>

namespace moorline {

namespace {

// A thread that is quick to end does so in milliseconds. One that is stuck in the look-up of a proxy may take minutes.
constexpr std::chrono::milliseconds longestJoin{500};

} // namespace

HttpThread::HttpThread()
    : m_thread(new QThread)
    , m_worker(new HttpWorker)
{
    m_thread->setObjectName(QStringLiteral("http"));
    m_worker->moveToThread(m_thread);
    connect(m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    connect(m_worker, &HttpWorker::answered, this, &HttpThread::answered);
    m_thread->start();
}

HttpThread::~HttpThread()
{
    m_thread->requestInterruption();
    QMetaObject::invokeMethod(m_worker, &HttpWorker::end);
    // One that is stuck is left to itself.
    if (m_thread->wait(QDeadlineTimer(longestJoin)))
        delete m_thread;
}

quint64 HttpThread::begin(const QUrl &url, qint64 largestBody)
{
    const quint64 id = ++m_lastId;
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, id, url, largestBody] { worker->begin(id, url, largestBody); });
    return id;
}

void HttpThread::abandon(quint64 id)
{
    QMetaObject::invokeMethod(m_worker, [worker = m_worker, id] { worker->abandon(id); });
}

} // namespace moorline
