#include "HttpServer.h"

#include <QSslSocket>
#include <QTimer>
#include <sys/socket.h>

namespace moorline::test {

namespace {

// What a connection may have waiting before a flood pauses.
constexpr qint64 floodBuffer = qint64(64) * 1024;

const QByteArray endOfHead = QByteArrayLiteral("\r\n\r\n");

QByteArray pathOf(const QByteArray &head)
{
    const QByteArray target = head.mid(head.indexOf(' ') + 1);
    return target.left(std::min(target.indexOf(' '), (target + '?').indexOf('?')));
}

/// In bytes, plain or not.
qint64 waitingIn(const QTcpSocket &socket)
{
    const auto *secure = qobject_cast<const QSslSocket *>(&socket);
    return socket.bytesToWrite() + (secure ? secure->encryptedBytesToWrite() : 0);
}

void pour(QTcpSocket &socket, const QByteArray &piece, qint64 limit, qint64 &sent)
{
    while (sent < limit && socket.isValid() && waitingIn(socket) < floodBuffer)
        sent += socket.write(piece);
}

} // namespace

HttpServer::HttpServer()
    : HttpServer(std::make_unique<QTcpServer>(), QStringLiteral("http"))
{
}

HttpServer::HttpServer(std::unique_ptr<QTcpServer> server, const QString &scheme)
    : m_server(std::move(server))
    , m_scheme(scheme)
{
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, &HttpServer::accept);
    m_server->listen(QHostAddress::LocalHost);
}

void HttpServer::on(const QByteArray &path, Behavior behavior)
{
    m_behaviors[path] = std::move(behavior);
}

QUrl HttpServer::url(const QString &path) const
{
    const QString address = QStringLiteral("%1://127.0.0.1:%2%3");
    return QUrl(address.arg(m_scheme).arg(m_server->serverPort()).arg(path));
}

void HttpServer::accept()
{
    while (QTcpSocket *socket = m_server->nextPendingConnection()) {
        ++m_connections;
        ++m_openConnections;
        // Else each small piece of a flood waits for word that the one before it has come.
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        const auto unread = std::make_shared<QByteArray>();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, unread] { read(*socket, *unread); });
        connect(socket, &QTcpSocket::disconnected, this, [this] { --m_openConnections; });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        read(*socket, *unread);
    }
}

void HttpServer::read(QTcpSocket &socket, QByteArray &unread)
{
    unread += socket.readAll();
    const auto end = unread.indexOf(endOfHead);
    if (end < 0)
        return;
    const QByteArray head = unread.left(end + endOfHead.size());
    unread.remove(0, head.size());
    m_requests.append(head);
    answer(socket, head);
}

void HttpServer::answer(QTcpSocket &socket, const QByteArray &head)
{
    const auto behavior = m_behaviors.find(pathOf(head));
    if (behavior != m_behaviors.end())
        behavior->second(socket);
}

QByteArray httpAnswer(const QByteArray &status, const QByteArray &body, const QList<QByteArray> &headers)
{
    QByteArray head = "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n";
    for (const QByteArray &header : headers)
        head += header + "\r\n";
    return head + "\r\n" + body;
}

HttpServer::Behavior sends(const QByteArray &bytes)
{
    return [bytes](QTcpSocket &socket) { socket.write(bytes); };
}

HttpServer::Behavior sendsAndCloses(const QByteArray &bytes)
{
    return [bytes](QTcpSocket &socket) {
        socket.write(bytes);
        socket.disconnectFromHost();
    };
}

HttpServer::Behavior floods(const QByteArray &beginning, const QByteArray &piece, qint64 limit, qint64 &sent)
{
    return [beginning, piece, limit, &sent](QTcpSocket &socket) {
        socket.write(beginning);
        const auto goOn = [&socket, piece, limit, &sent] { pour(socket, piece, limit, sent); };
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, goOn);
        if (auto *secure = qobject_cast<QSslSocket *>(&socket))
            QObject::connect(secure, &QSslSocket::encryptedBytesWritten, secure, goOn);
        goOn();
    };
}

HttpServer::Behavior drips(const QByteArray &beginning, qint64 &sent)
{
    return [beginning, &sent](QTcpSocket &socket) {
        socket.write(beginning);
        auto *timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket, &sent] { sent += socket.write(" "); });
        timer->start(2);
    };
}

HttpServer::Behavior resets()
{
    return [](QTcpSocket &socket) {
        const linger atOnce{.l_onoff = 1, .l_linger = 0};
        setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        socket.abort();
    };
}

HttpServer::Behavior redirectsTo(const QByteArray &target)
{
    return sends(httpAnswer("302 Found", "elsewhere", {"Location: " + target, "Content-Type: text/plain"}));
}

} // namespace moorline::test
