#include "chrome/BarWidget.h"

namespace moorline {

BarWidget::BarWidget(QGraphicsItem *parent)
    : BarItem(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void BarWidget::setIconSize(qreal)
{
}

void BarWidget::setNaturalSize(const QSizeF &size)
{
    if (size == preferredSize())
        return;
    setMinimumSize(size);
    setMaximumSize(size);
    setPreferredSize(size);
    resize(size);
    Q_EMIT naturalSizeChanged();
}

} // namespace moorline
