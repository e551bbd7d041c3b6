#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QUrl;
QT_END_NAMESPACE

namespace moorline {

/// What came of one request.
struct HttpAnswer {
    /// Why there is no whole answer, in the user's language: offline, too late, cut off, too large, redirected to where
    /// anyone could listen. Absent when an answer came, of whichever status.
    std::optional<QString> failure;
    int status = 0;
    /// Decompressed.
    QByteArray body;

    bool operator==(const HttpAnswer &) const = default;
};

/// Requests that leave nothing behind: no cache, no cookies, no credentials. They are made at once or not at all.
class HttpClient {
public:
    /// A request under way. Destroying it gives the request up, and no answer comes afterwards.
    class Request {
    public:
        virtual ~Request() = default;
    };
    using Completion = std::function<void(const HttpAnswer &)>;

    /// How long one request may take from its start to the last byte of the answer.
    static constexpr std::chrono::seconds timeLimit{12};
    /// The largest body that is accepted from whoever does not say otherwise, in bytes.
    static constexpr qint64 usualBody = qint64(1024) * 1024;

    virtual ~HttpClient() = default;

    /// Answers once, from the event loop and never from within this call. The completion may destroy its own request.
    /// A body of more than `largestBody` bytes is refused.
    [[nodiscard]] virtual std::unique_ptr<Request> get(
        const QUrl &url, Completion completion, qint64 largestBody = usualBody) = 0;
};

} // namespace moorline
