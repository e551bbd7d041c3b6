#pragma once

#include "platform/Clock.h"
#include "platform/HttpClient.h"

#include <QObject>
#include <QPointer>

namespace moorline {

class HttpThread;

/// The main thread's half of a request: its time limit, and the promise to answer once or not at all.
class PendingHttpRequest final : public QObject, public HttpClient::Request {
    Q_OBJECT
public:
    explicit PendingHttpRequest(HttpClient::Completion completion);
    ~PendingHttpRequest() override;

    /// Both outlive the request or not, as they like; without its thread it never answers.
    void begin(HttpThread &thread, Clock &clock, const QUrl &url, qint64 largestBody);
    /// Fails without anything having been asked.
    void refuse();

private:
    void fail(const QString &reason);
    void finish(const HttpAnswer &answer);
    void abandon();
    void silence();

    HttpClient::Completion m_completion;
    QPointer<HttpThread> m_thread;
    quint64 m_id = 0;
    std::unique_ptr<Clock::Timer> m_timeLimit;
};

} // namespace moorline
