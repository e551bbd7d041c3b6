#include "chrome/BarWidget.h"

#include "theme/Text.h"

#include <QEvent>
#include <utility>

namespace moorline {

BarWidget::BarWidget(QGraphicsItem *parent)
    : BarItem(parent)
    , m_font(moorline::font(TextStyle()))
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void BarWidget::setIconSize(qreal)
{
}

void BarWidget::measure()
{
}

void BarWidget::changeEvent(QEvent *event)
{
    BarItem::changeEvent(event);
    // A scene tells of a change as well where a widget only comes or goes.
    if (event->type() == QEvent::FontChange && std::exchange(m_font, moorline::font(TextStyle())) != m_font)
        measure();
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
