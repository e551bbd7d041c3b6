#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <functional>
#include <memory>

namespace moorline {

/// Reads pictures that come from anywhere, on a thread of their own. What is no picture, or too large, is none.
class Pictures {
public:
    /// The largest file or data that is looked into, in bytes, and the longest side of a picture, in pixels.
    static constexpr qint64 largestData = qint64(10) * 1024 * 1024;
    static constexpr int longestSide = 4096;

    /// A picture that is waited for. Once it is destroyed, no answer comes.
    class Request {
    public:
        virtual ~Request() = default;
    };
    /// Null when there is no picture.
    using Completion = std::function<void(const QImage &picture)>;

    Pictures() = default;
    Pictures(const Pictures &) = delete;
    Pictures &operator=(const Pictures &) = delete;
    virtual ~Pictures() = default;

    /// A picture in a regular file, of whatever format the system reads but vector graphics: a square of `side` pixels
    /// that the picture fills in its own proportions, what lies beyond being cut off. Answers once, from the event
    /// loop, never from within this call.
    [[nodiscard]] virtual std::unique_ptr<Request> read(const QString &path, int side, Completion completion) = 0;
    /// The same of what such a file would hold.
    [[nodiscard]] virtual std::unique_ptr<Request> decode(const QByteArray &data, int side, Completion completion) = 0;
    /// The same of data in base64, percent-encoded as in an address.
    [[nodiscard]] virtual std::unique_ptr<Request> decodeBase64(
        const QByteArray &text, int side, Completion completion) = 0;
};

} // namespace moorline
