#pragma once

#include "platform/HttpClient.h"
#include "support/Promise.h"

#include <QCoroTask>
#include <QUrl>

namespace moorline {

/// Web requests that follow one another and are given up together. One is under way at a time.
class WebSession final {
public:
    /// `client` outlives the session.
    explicit WebSession(HttpClient &client);
    WebSession(const WebSession &) = delete;
    WebSession &operator=(const WebSession &) = delete;
    ~WebSession();

    /// Fails at once when the session is cancelled, before or meanwhile. Whoever waits holds the session.
    [[nodiscard]] QCoro::Task<HttpAnswer> get(QUrl url);

    /// Gives up what is under way and whatever would follow. Whoever waits goes on within this call.
    void cancel();
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }

private:
    HttpClient &m_client;
    bool m_isCancelled = false;
    std::unique_ptr<HttpClient::Request> m_request;
    Promise<HttpAnswer> m_answer;
};

} // namespace moorline
