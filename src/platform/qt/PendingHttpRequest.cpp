#include "platform/qt/PendingHttpRequest.h"

#include "platform/qt/HttpThread.h"

namespace moorline {

PendingHttpRequest::PendingHttpRequest(HttpClient::Completion completion)
    : m_completion(std::move(completion))
{
}

PendingHttpRequest::~PendingHttpRequest()
{
    abandon();
}

void PendingHttpRequest::begin(HttpThread &thread, Clock &clock, const QUrl &url, qint64 largestBody)
{
    m_thread = &thread;
    connect(&thread, &QObject::destroyed, this, &PendingHttpRequest::silence);
    connect(&thread, &HttpThread::answered, this, [this](quint64 id, const HttpAnswer &answer) {
        if (id == m_id)
            finish(answer);
    });
    m_timeLimit = clock.after(HttpClient::timeLimit, [this] {
        abandon();
        fail(tr("The request timed out."));
    });
    m_id = thread.begin(url, largestBody);
}

void PendingHttpRequest::refuse()
{
    QMetaObject::invokeMethod(
        this, [this] { fail(tr("The address is not supported.")); }, Qt::QueuedConnection);
}

void PendingHttpRequest::fail(const QString &reason)
{
    finish({.failure = reason, .status = 0, .body = {}});
}

/// The completion may destroy this, so it comes last.
void PendingHttpRequest::finish(const HttpAnswer &answer)
{
    const HttpClient::Completion completion = std::move(m_completion);
    silence();
    if (completion)
        completion(answer);
}

void PendingHttpRequest::abandon()
{
    if (m_thread)
        m_thread->abandon(m_id);
}

void PendingHttpRequest::silence()
{
    m_completion = nullptr;
    m_timeLimit.reset();
    m_thread = nullptr;
}

} // namespace moorline
