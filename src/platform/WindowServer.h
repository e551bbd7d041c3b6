#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>
#include <optional>

namespace moorline {

/// Names a window for as long as there is one.
using WindowId = quint64;

/// What a window is for, as its program says.
enum class WindowKind { normal, dialog, utility, dock, desktop, other };

/// What the window server says of one window. A value it does not give, or gives in another type, is absent.
struct WindowDescription {
    std::optional<QString> ownerName = std::nullopt;
    std::optional<qint64> ownerProcess = std::nullopt;
    std::optional<int> layer = std::nullopt;
    /// In points, origin at the top left of the primary screen, y growing downwards, without client-side shadows. Of a
    /// dock, the part that takes the pointer.
    std::optional<QRectF> bounds = std::nullopt;
    std::optional<WindowId> id = std::nullopt;
    std::optional<WindowKind> kind = std::nullopt;
    /// Absent where the system has no such state, or nobody who keeps it.
    std::optional<bool> isFullScreen = std::nullopt;
    /// The window that this one is a dialog of.
    std::optional<WindowId> transientFor = std::nullopt;
    /// Whether the user works in it, as far as the system tells.
    bool isActive = false;

    bool operator==(const WindowDescription &) const = default;
};

/// One display and the space that it shows now. A value that the system does not give is absent.
struct DisplaySpace {
    std::optional<QString> displayIdentifier = std::nullopt;
    /// The window server's number for the kind of space; 4 is one that an application fills.
    std::optional<qint64> currentSpaceType = std::nullopt;

    bool operator==(const DisplaySpace &) const = default;
};

/// The layers that have a meaning of their own.
enum class WindowLevel { dock, mainMenu };

/// The windows on screen and the spaces they are in.
class WindowServer : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Front to back, without desktop elements. Absent when the window server does not tell.
    [[nodiscard]] virtual std::optional<QList<WindowDescription>> onScreenWindows() const = 0;
    [[nodiscard]] virtual int level(WindowLevel level) const = 0;

    /// What each display shows. Absent when the system has no such query.
    [[nodiscard]] virtual std::optional<QList<DisplaySpace>> managedDisplaySpaces() const = 0;
    /// The identifier of the primary screen among those displays.
    [[nodiscard]] virtual std::optional<QString> mainDisplayUUID() const = 0;

Q_SIGNALS:
    /// What the last answer said of the windows may no longer hold. It need not come again before the next question.
    /// Not every system tells of every change.
    void windowsChanged();
};

} // namespace moorline
