#include "chrome/BarWidget.h"

namespace moorline {

BarWidget::BarWidget(QGraphicsItem *parent)
    : QGraphicsWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
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

void BarWidget::setHelpText(const QString &text)
{
    if (text == toolTip())
        return;
    setToolTip(text);
    Q_EMIT helpTextChanged();
}

} // namespace moorline
