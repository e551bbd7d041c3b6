#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>
#include <functional>
#include <map>
#include <memory>

namespace moorline::test {

/// A server on this machine that answers as badly as it is told to, by path.
class HttpServer final : public QObject {
    Q_OBJECT
public:
    /// Called with the connection when the head of a request is complete. What it leaves there is sent; the connection
    /// stays open.
    using Behavior = std::function<void(QTcpSocket &)>;

    HttpServer();
    /// With a server that makes other connections than plain ones.
    HttpServer(std::unique_ptr<QTcpServer> server, const QString &scheme);

    void on(const QByteArray &path, Behavior behavior);
    [[nodiscard]] QUrl url(const QString &path = QStringLiteral("/")) const;

    /// The heads of the requests so far, each with its last empty line.
    [[nodiscard]] const QList<QByteArray> &requests() const { return m_requests; }
    /// Connections that were opened so far.
    [[nodiscard]] int connections() const { return m_connections; }
    /// Connections that are open now.
    [[nodiscard]] int openConnections() const { return m_openConnections; }

private:
    void accept();
    void read(QTcpSocket &socket, QByteArray &unread);
    void answer(QTcpSocket &socket, const QByteArray &head);

    std::unique_ptr<QTcpServer> m_server;
    QString m_scheme;
    std::map<QByteArray, Behavior> m_behaviors;
    QList<QByteArray> m_requests;
    int m_connections = 0;
    int m_openConnections = 0;
};

/// A whole answer with these headers, each without its line end, and the right Content-Length.
[[nodiscard]] QByteArray httpAnswer(
    const QByteArray &status, const QByteArray &body, const QList<QByteArray> &headers = {});

/// Sends these bytes.
[[nodiscard]] HttpServer::Behavior sends(const QByteArray &bytes);
/// Sends these bytes and closes.
[[nodiscard]] HttpServer::Behavior sendsAndCloses(const QByteArray &bytes);
/// Sends the beginning, then the same piece again and again, as fast as the other side reads, and counts what went out.
[[nodiscard]] HttpServer::Behavior floods(
    const QByteArray &beginning, const QByteArray &piece, qint64 limit, qint64 &sent);
/// Sends the beginning, then a byte every few milliseconds, and counts them.
[[nodiscard]] HttpServer::Behavior drips(const QByteArray &beginning, qint64 &sent);
/// Breaks the connection, as a router that forgot it does.
[[nodiscard]] HttpServer::Behavior resets();
[[nodiscard]] HttpServer::Behavior redirectsTo(const QByteArray &target);

} // namespace moorline::test
