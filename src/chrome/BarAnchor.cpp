#include "chrome/BarAnchor.h"

#include <QGraphicsWidget>

namespace moorline {

namespace {

/// Without what is painted beyond the edges of a widget, such as a shadow.
QRectF extent(const QGraphicsObject &item)
{
    return item.isWidget() ? static_cast<const QGraphicsWidget &>(item).rect() : item.boundingRect();
}

} // namespace

QRectF BarAnchor::frame() const
{
    if (!item)
        return {};
    return item->mapRectToScene(part.value_or(extent(*item)));
}

} // namespace moorline
