#pragma once

#include "platform/HttpClient.h"

#include <QUrl>
#include <memory>

namespace moorline {

class Clock;
class HttpThread;

/// HTTP through Qt Network. Looking for a proxy, starting TLS and reading certificates may block, so all of that
/// happens on a thread of its own, which is started by the first request.
class QtHttpClient final : public HttpClient {
public:
    explicit QtHttpClient(Clock &clock);
    /// Silences what is under way.
    ~QtHttpClient() override;

    [[nodiscard]] std::unique_ptr<Request> get(
        const QUrl &url, Completion completion, qint64 largestBody = usualBody) override;

private:
    HttpThread &thread();

    Clock &m_clock;
    std::unique_ptr<HttpThread> m_thread;
};

} // namespace moorline
