#pragma once

#include <QHashFunctions>
#include <QImage>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>

namespace moorline {

enum class IconKind {
    /// An application, by the path of its bundle.
    application,
    /// Any other file or folder, by its path.
    file,
    /// An image that the system keeps under a name, such as "NSTrashFull".
    named,
};

struct IconRequest {
    IconKind kind = IconKind::file;
    /// A path or a name.
    QString subject;
    /// The side of the square, in points.
    qreal size = 46;
    /// Device pixels per point.
    qreal scale = 1;

    bool operator==(const IconRequest &) const = default;
};

[[nodiscard]] inline std::size_t qHash(const IconRequest &request, std::size_t seed = 0)
{
    return qHashMulti(seed, int(request.kind), request.subject, request.size, request.scale);
}

/// The icons of applications and files, and named images, as this session shows them.
class Icons : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// A question that waits for its answer. Once it is destroyed, no answer comes.
    class Request {
    public:
        virtual ~Request() = default;
    };
    /// A square image of the asked size with its device pixel ratio set to the asked scale; null when there is no such
    /// icon.
    using Completion = std::function<void(const QImage &icon)>;

    /// Calls back once, from the event loop, never from within this call.
    [[nodiscard]] virtual std::unique_ptr<Request> load(const IconRequest &request, Completion completion) = 0;

Q_SIGNALS:
    /// Any icon may look different now, and one that was missing may be there: what is shown is worth asking for again.
    void themeChanged();
};

} // namespace moorline
