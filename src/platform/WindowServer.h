#pragma once

#include <QList>
#include <QRectF>
#include <QString>
#include <QVariant>
#include <optional>

namespace moorline {

/// What the window server says of one window. A value it does not give, or gives in another type, is absent.
struct WindowDescription {
    std::optional<QString> ownerName;
    std::optional<qint64> ownerProcess;
    std::optional<int> layer;
    /// In points, origin at the top left of the primary screen, y growing downwards, without client-side shadows.
    std::optional<QRectF> bounds;

    bool operator==(const WindowDescription &) const = default;
};

/// The layers that have a meaning of their own.
enum class WindowLevel { dock, mainMenu };

/// The windows on screen and the spaces they are in.
class WindowServer {
public:
    virtual ~WindowServer() = default;

    /// Front to back, without desktop elements. Absent when the window server does not tell.
    [[nodiscard]] virtual std::optional<QList<WindowDescription>> onScreenWindows() const = 0;
    [[nodiscard]] virtual int level(WindowLevel level) const = 0;

    /// One dictionary (QVariantMap) for each display: "Display Identifier" (text) and "Current Space", a dictionary
    /// whose "type" (integer) is 4 for a full-screen space. Absent when the system has no such query.
    [[nodiscard]] virtual std::optional<QVariantList> managedDisplaySpaces() const = 0;
    /// The identifier of the primary screen in those dictionaries.
    [[nodiscard]] virtual std::optional<QString> mainDisplayUUID() const = 0;
};

} // namespace moorline
