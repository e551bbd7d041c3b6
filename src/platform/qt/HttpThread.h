#pragma once

#include "platform/HttpClient.h"

#include <QObject>
#include <QThread>

namespace moorline {

class HttpWorker;

/// The thread that makes requests, as the main thread sees it. Nothing here waits, but for the end.
class HttpThread final : public QObject {
    Q_OBJECT
public:
    HttpThread();
    ~HttpThread() override;

    /// What the answer will be known by.
    [[nodiscard]] quint64 begin(const QUrl &url, qint64 largestBody);
    /// No harm when the answer is already on its way; it still arrives then.
    void abandon(quint64 id);

Q_SIGNALS:
    void answered(quint64 id, const moorline::HttpAnswer &answer);

private:
    QThread *m_thread;
    /// Lives on the thread and ends with it.
    HttpWorker *m_worker;
    quint64 m_lastId = 0;
};

} // namespace moorline
