#pragma once

#include "platform/HttpClient.h"

#include <QObject>

QT_BEGIN_NAMESPACE
class QNetworkAccessManager;
class QNetworkReply;
class QUrl;
QT_END_NAMESPACE

namespace moorline {

/// One request and its answer on the network, over as many addresses as it is sent on to. Destroying it gives the
/// request up.
class HttpExchange final : public QObject {
    Q_OBJECT
public:
    /// A body of more than `largestBody` bytes is refused.
    HttpExchange(QNetworkAccessManager &session, const QUrl &url, qint64 largestBody);
    ~HttpExchange() override;

Q_SIGNALS:
    /// Once, and never from within the constructor. The exchange may be destroyed on it.
    void finished(const moorline::HttpAnswer &answer);

private:
    void ask(const QUrl &url);
    void giveUp();
    /// False when it is more than is accepted.
    [[nodiscard]] bool readBody();
    void checkBody();
    void finish();
    [[nodiscard]] bool hasFailed() const;
    [[nodiscard]] int status() const;
    /// Where the answer sends on to, when it does.
    [[nodiscard]] std::optional<QUrl> redirect() const;
    void follow(const QUrl &target);
    void giveAnswer();
    void fail(const QString &reason);
    void conclude(const HttpAnswer &answer);

    QNetworkAccessManager &m_session;
    QNetworkReply *m_reply = nullptr;
    int m_redirects = 0;
    QByteArray m_body;
    qint64 m_largestBody;
};

} // namespace moorline
