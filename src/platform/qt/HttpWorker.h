#pragma once

#include "platform/HttpClient.h"

#include <QObject>
#include <map>

QT_BEGIN_NAMESPACE
class QNetworkAccessManager;
QT_END_NAMESPACE

namespace moorline {

class HttpExchange;

/// What lives on the thread for requests: a network session that lasts only as long as there are requests under way, so
/// that neither a connection nor anything learnt on it is left behind.
class HttpWorker final : public QObject {
    Q_OBJECT
public:
    HttpWorker();
    ~HttpWorker() override;

    void begin(quint64 id, const QUrl &url, qint64 largestBody);
    void abandon(quint64 id);
    /// Ends the session and the thread.
    void end();

Q_SIGNALS:
    void answered(quint64 id, const moorline::HttpAnswer &answer);

private:
    struct LaterDeleter {
        void operator()(QNetworkAccessManager *manager) const;
    };

    std::unique_ptr<QNetworkAccessManager, LaterDeleter> m_session;
    std::map<quint64, std::unique_ptr<HttpExchange>> m_exchanges;
};

} // namespace moorline
