#include "platform/qt/HttpWorker.h"

#include "platform/qt/HttpExchange.h"

#include <QNetworkAccessManager>
#include <QThread>

namespace moorline {

HttpWorker::HttpWorker() = default;

HttpWorker::~HttpWorker() = default;

void HttpWorker::begin(quint64 id, const QUrl &url, qint64 largestBody)
{
    // A thread that was stuck when its client went may still find requests that nobody waits for.
    if (thread()->isInterruptionRequested())
        return;
    if (!m_session)
        m_session.reset(new QNetworkAccessManager);
    auto exchange = std::make_unique<HttpExchange>(*m_session, url, largestBody);
    connect(exchange.get(), &HttpExchange::finished, this, [this, id](const HttpAnswer &answer) {
        Q_EMIT answered(id, answer);
        abandon(id);
    });
    m_exchanges.emplace(id, std::move(exchange));
}

void HttpWorker::abandon(quint64 id)
{
    m_exchanges.erase(id);
    if (m_exchanges.empty())
        m_session.reset();
}

void HttpWorker::end()
{
    m_exchanges.clear();
    // There is no later on a thread that ends, and it has not ended before the session has.
    delete m_session.release();
    thread()->quit();
}

/// It is in the middle of reporting an answer when the last request ends.
void HttpWorker::LaterDeleter::operator()(QNetworkAccessManager *manager) const
{
    manager->deleteLater();
}

} // namespace moorline
