#include "chrome/WidgetDivider.h"

#include "theme/DevicePixels.h"
#include "theme/Theme.h"

#include <QPainter>

namespace moorline {

namespace {

constexpr qreal verticalPadding = 10;

} // namespace

WidgetDivider::WidgetDivider(QGraphicsItem *parent)
    : QGraphicsWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setPreferredWidth(lineWidth);
    resize(lineWidth, size().height());
}

void WidgetDivider::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const QRectF line(0, verticalPadding, lineWidth, size().height() - 2 * verticalPadding);
    if (line.isValid())
        painter->fillRect(snappedToPixels(*painter, line), Theme::divider);
}

} // namespace moorline
