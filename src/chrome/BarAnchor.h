#pragma once

#include <QGraphicsObject>
#include <QPointer>
#include <optional>

namespace moorline {

/// What of the bar a window above it belongs to.
struct BarAnchor {
    BarAnchor(QGraphicsObject &anchorItem, std::optional<QRectF> anchorPart = std::nullopt)
        : item(&anchorItem)
        , part(anchorPart)
    {
    }

    /// In the coordinates of the scene. Empty once the item is gone.
    [[nodiscard]] QRectF frame() const;

    /// Whether it is a place on the item and not something that can be pressed again.
    [[nodiscard]] bool isPlace() const { return part && part->isEmpty(); }

    bool operator==(const BarAnchor &) const = default;

    /// Null once it is gone.
    QPointer<QGraphicsObject> item;
    /// In the item's own coordinates; the whole of it where absent.
    std::optional<QRectF> part;
};

} // namespace moorline
