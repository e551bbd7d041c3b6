#pragma once

#include <QList>
#include <QMarginsF>
#include <QObject>
#include <QRectF>

namespace moorline {

/// One screen. Rectangles are in points with the origin at the bottom left of the primary screen, y growing upwards.
struct Screen {
    QRectF frame;
    /// The frame without what the system keeps for itself: menu bar, panels.
    QRectF visibleFrame;
    /// What is physically covered, such as a camera housing.
    QMarginsF safeAreaInsets;
    /// Device pixels per point.
    qreal scale = 1;

    bool operator==(const Screen &) const = default;
};

/// The screens that are connected now. There may be none for a while: while docking, waking, or switching cables.
class Screens : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The system's own order. The primary screen is the one whose frame starts at (0, 0).
    [[nodiscard]] virtual QList<Screen> screens() const = 0;

Q_SIGNALS:
    /// Something about the screens changed. May come several times for one change.
    void screensChanged();
};

/// The same rectangle with the origin moved between the bottom left and the top left of a screen of this height.
/// Its own inverse.
[[nodiscard]] inline QRectF verticallyFlipped(const QRectF &rect, qreal primaryScreenHeight)
{
    return {rect.x(), primaryScreenHeight - rect.y() - rect.height(), rect.width(), rect.height()};
}

} // namespace moorline
