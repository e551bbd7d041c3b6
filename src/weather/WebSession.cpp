#include "weather/WebSession.h"

namespace moorline {

namespace {

HttpAnswer cancelled()
{
    HttpAnswer answer;
    answer.failure = QStringLiteral("cancelled");
    return answer;
}

} // namespace

WebSession::WebSession(HttpClient &client)
    : m_client(client)
{
}

WebSession::~WebSession() = default;

QCoro::Task<HttpAnswer> WebSession::get(QUrl url)
{
    if (m_isCancelled)
        co_return cancelled();
    const Promise<HttpAnswer> answer;
    m_answer = answer;
    m_request = m_client.get(url, [answer](const HttpAnswer &came) { answer.resolve(came); });
    co_return co_await answer;
}

void WebSession::cancel()
{
    m_isCancelled = true;
    m_request.reset();
    // By a copy: whoever goes on may let go of this session.
    const Promise<HttpAnswer> answer = m_answer;
    answer.resolve(cancelled());
}

} // namespace moorline
