#include "platform/qt/HttpExchange.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <algorithm>
#include <array>

namespace moorline {

namespace {

constexpr int mostRedirects = 5;
constexpr int firstErrorStatus = 400;
// How much Qt may hold that was not read yet, compressed.
constexpr qint64 readBuffer = qint64(64) * 1024;

QByteArray userAgent()
{
    return (QCoreApplication::applicationName() + u'/' + QCoreApplication::applicationVersion()).toUtf8();
}

void leaveNothingBehind(QNetworkRequest &request)
{
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
}

QNetworkRequest requestFor(const QUrl &url)
{
    QNetworkRequest request(url);
    leaveNothingBehind(request);
    // Pictures are asked for as well.
    request.setRawHeader("Accept", "application/json, */*;q=0.5");
    request.setRawHeader("User-Agent", userAgent());
    // Qt 6.4 asks twice and answers early when it follows one redirect after another that it was allowed.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // Over HTTP/2 Qt reads on while its buffer is full.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // The size of the body is looked at here, and as it is decompressed.
    request.setDecompressedSafetyCheckThreshold(-1);
    return request;
}

bool isRedirect(int status)
{
    constexpr std::array redirects{301, 302, 303, 307, 308};
    return std::find(redirects.begin(), redirects.end(), status) != redirects.end();
}

/// Qt reports every status of 400 and above as an error of its own kind, after the whole body.
bool isOfStatus(QNetworkReply::NetworkError error, int status)
{
    if (status < firstErrorStatus)
        return false;
    const bool isOfContent = error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError;
    const bool isOfServer = error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError;
    return isOfContent || isOfServer || error == QNetworkReply::ProtocolInvalidOperationError;
}

} // namespace

HttpExchange::HttpExchange(QNetworkAccessManager &session, const QUrl &url, qint64 largestBody)
    : m_session(session)
    , m_largestBody(largestBody)
{
    ask(url);
}

HttpExchange::~HttpExchange()
{
    giveUp();
}

void HttpExchange::ask(const QUrl &url)
{
    m_body.clear();
    m_reply = m_session.get(requestFor(url.adjusted(QUrl::RemoveUserInfo)));
    m_reply->setReadBufferSize(readBuffer);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpExchange::checkBody);
    connect(m_reply, &QNetworkReply::finished, this, &HttpExchange::finish);
}

void HttpExchange::giveUp()
{
    // Aborting reports an end as well.
    m_reply->disconnect(this);
    m_reply->abort();
    m_reply->deleteLater();
}

bool HttpExchange::readBody()
{
    // One byte more than is accepted tells a body that is too large.
    while (m_body.size() <= m_largestBody) {
        const QByteArray piece = m_reply->read(std::min(readBuffer, m_largestBody + 1 - m_body.size()));
        if (piece.isEmpty())
            return true;
        m_body += piece;
    }
    return false;
}

void HttpExchange::checkBody()
{
    if (!readBody())
        fail(tr("The answer is too large."));
}

void HttpExchange::finish()
{
    if (!readBody())
        fail(tr("The answer is too large."));
    else if (hasFailed())
        fail(m_reply->errorString());
    else if (const auto target = redirect())
        follow(*target);
    else
        giveAnswer();
}

bool HttpExchange::hasFailed() const
{
    return m_reply->error() != QNetworkReply::NoError && !isOfStatus(m_reply->error(), status());
}

int HttpExchange::status() const
{
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

std::optional<QUrl> HttpExchange::redirect() const
{
    const QByteArray location = m_reply->rawHeader("Location");
    if (location.isEmpty() || !isRedirect(status()))
        return std::nullopt;
    return m_reply->url().resolved(QUrl::fromEncoded(location));
}

void HttpExchange::follow(const QUrl &target)
{
    if (target.scheme() != QLatin1StringView("https") || target.host().isEmpty())
        return fail(tr("The answer redirects to an unprotected address."));
    if (++m_redirects > mostRedirects)
        return fail(tr("The answer redirects too often."));
    giveUp();
    ask(target);
}

void HttpExchange::giveAnswer()
{
    conclude({.failure = std::nullopt, .status = status(), .body = m_body});
}

void HttpExchange::fail(const QString &reason)
{
    conclude({.failure = reason, .status = 0, .body = {}});
}

/// Whoever hears of it may destroy the exchange, so that comes last.
void HttpExchange::conclude(const HttpAnswer &answer)
{
    m_reply->disconnect(this);
    Q_EMIT finished(answer);
}

} // namespace moorline
