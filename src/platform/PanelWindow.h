#pragma once

#include <QPainterPath>
#include <QRectF>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace moorline {

/// How the panel behaves across spaces. The values are those of AppKit's NSWindowCollectionBehavior.
enum class CollectionBehavior : unsigned {
    canJoinAllSpaces = 1U << 0U,
    stationary = 1U << 4U,
    ignoresCycle = 1U << 6U,
    fullScreenAuxiliary = 1U << 8U,
};

/// The native half of the panel: it floats above other windows on every space and never takes the focus.
class PanelWindow {
public:
    virtual ~PanelWindow() = default;

    /// Makes the native window of `panel`, a top-level widget that was never shown and that outlives the last call
    /// here.
    virtual void adopt(QWidget &panel) = 0;

    virtual void setLevel(int level) = 0;
    [[nodiscard]] virtual int level() const = 0;
    /// A sum of CollectionBehavior values.
    virtual void setCollectionBehavior(unsigned behavior) = 0;

    /// In points, origin at the bottom left of the primary screen. A frame that a window can have: no value beyond
    /// 16383 device pixels, no length below a point.
    virtual void setFrame(const QRectF &frame) = 0;
    /// What the window really has now, in the same coordinates.
    [[nodiscard]] virtual QRectF frame() const = 0;

    /// Where a part of the panel lies on the desktop, in the coordinates and the unit that assistive technology counts
    /// in here. `part` is in points, origin at the top left of the panel.
    [[nodiscard]] virtual QRect accessibleRect(const QRectF &part) const = 0;

    /// Shows the panel above its level's other windows without activating the program.
    virtual void orderFrontRegardless() = 0;

    /// The only part of the panel that takes pointer input; everything else lets it through to the windows below.
    /// In points, origin at the top left of the panel.
    virtual void setInteractiveArea(const QPainterPath &area) = 0;
};

} // namespace moorline
