#include "platform/qt/QtHttpClient.h"

#include "platform/qt/HttpThread.h"
#include "platform/qt/PendingHttpRequest.h"

namespace moorline {

namespace {

/// Qt would also read files and speak other protocols.
bool isWebAddress(const QUrl &url)
{
    const bool isSpoken = url.scheme() == QLatin1StringView("https") || url.scheme() == QLatin1StringView("http");
    return url.isValid() && isSpoken && !url.host().isEmpty();
}

} // namespace

QtHttpClient::QtHttpClient(Clock &clock)
    : m_clock(clock)
{
}

QtHttpClient::~QtHttpClient() = default;

std::unique_ptr<HttpClient::Request> QtHttpClient::get(const QUrl &url, Completion completion, qint64 largestBody)
{
    auto request = std::make_unique<PendingHttpRequest>(std::move(completion));
    if (isWebAddress(url))
        request->begin(thread(), m_clock, url, largestBody);
    else
        request->refuse();
    return request;
}

HttpThread &QtHttpClient::thread()
{
    if (!m_thread)
        m_thread = std::make_unique<HttpThread>();
    return *m_thread;
}

} // namespace moorline
