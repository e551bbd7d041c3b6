#include "chrome/BarItem.h"

#include "chrome/BarDrag.h"
#include "chrome/BarItemErrand.h"

#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QMetaMethod>
#include <algorithm>

namespace moorline {

BarItem::BarItem(QGraphicsItem *parent)
    : QGraphicsWidget(parent)
{
    setAcceptedMouseButtons(Qt::NoButton);
}

BarItem::~BarItem()
{
    if (!m_drag || !m_drag->held)
        return;
    // What is carried goes nowhere any more.
    m_drag->held->disconnect(this);
    m_drag->held->cancel();
}

void BarItem::setDescription(const Description &description)
{
    if (description == m_description)
        return;
    m_description = description;
    Q_EMIT descriptionChanged();
}

void BarItem::setHelpText(const QString &text)
{
    if (text == toolTip())
        return;
    setToolTip(text);
    Q_EMIT helpTextChanged();
}

void BarItem::setTouchable(bool touchable)
{
    m_isTouchable = touchable;
    const Errand errand(*this);
    // First, and not when Qt takes the pointer away: it goes on with the item.
    if (!touchable)
        cancelDrag();
    if (errand && !touchable)
        cancelPress();
    if (errand && !touchable)
        setState(m_isHovered, false, &BarItem::hoveredChanged);
    if (!errand)
        return;
    setAcceptedMouseButtons(touchable ? Qt::LeftButton : Qt::NoButton);
    setAcceptHoverEvents(touchable);
}

void BarItem::press()
{
    if (m_isTouchable && isVisible() && isEnabled())
        click();
}

bool BarItem::hasMenu() const
{
    static const QMetaMethod request = QMetaMethod::fromSignal(&BarItem::menuRequested);
    return isSignalConnected(request);
}

void BarItem::requestMenu()
{
    if (hasMenu() && isVisible() && isEnabled())
        Q_EMIT menuRequested(rect().center());
}

void BarItem::click()
{
    const Errand errand(*this);
    Q_EMIT clicked();
}

void BarItem::begin(const QGraphicsSceneMouseEvent &event, bool canClick)
{
    // Another button, pressed beside the first, spoils the click.
    if (m_press || m_drag || event.button() != Qt::LeftButton)
        return cancelPress();
    m_press = Press{.place = event.pos(), .screenPlace = event.screenPos(), .canClick = canClick};
    setState(m_isPressed, canClick, &BarItem::pressedChanged);
}

void BarItem::cancelPress()
{
    m_press.reset();
    setState(m_isPressed, false, &BarItem::pressedChanged);
}

bool BarItem::sceneEvent(QEvent *event)
{
    // Around every handler below: in an event loop that it leads to, the item may retire.
    const Errand errand(*this);
    return QGraphicsWidget::sceneEvent(event);
}

void BarItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    begin(*event, true);
}

void BarItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    event->accept();
    begin(*event, m_isRepeatable);
}

void BarItem::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (isDraggedInside())
        return dragTo(event->scenePos());
    if (!m_press)
        return;
    if (m_dragKind && isDrag(QPointF(event->screenPos()) - m_press->screenPlace))
        beginDrag(*m_dragKind, m_press->place);
    else
        setState(m_isPressed, m_press->canClick && shape().contains(event->pos()), &BarItem::pressedChanged);
}

void BarItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    if (isDraggedInside() && event->button() == Qt::LeftButton)
        return endDrag(DragEnd::letGo);
    const bool isClick = m_press && m_press->canClick && event->button() == Qt::LeftButton && isVisible()
        && shape().contains(event->pos());
    const Errand errand(*this);
    cancelPress();
    if (isClick && errand)
        click();
}

void BarItem::ungrabMouseEvent(QEvent *event)
{
    const Errand errand(*this);
    // A drag out of the bar has the pointer to itself.
    if (isDraggedInside())
        cancelDrag();
    if (errand)
        cancelPress();
    if (errand)
        QGraphicsWidget::ungrabMouseEvent(event);
}

void BarItem::hoverEnterEvent(QGraphicsSceneHoverEvent *)
{
    setState(m_isHovered, true, &BarItem::hoveredChanged);
}

void BarItem::hoverMoveEvent(QGraphicsSceneHoverEvent *)
{
    setState(m_isHovered, true, &BarItem::hoveredChanged);
}

void BarItem::hoverLeaveEvent(QGraphicsSceneHoverEvent *)
{
    setState(m_isHovered, false, &BarItem::hoveredChanged);
}

void BarItem::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    if (!hasMenu() || !shape().contains(event->pos())) {
        event->ignore();
        return;
    }
    event->accept();
    Q_EMIT menuRequested(event->pos());
}

void BarItem::hideEvent(QHideEvent *event)
{
    const Errand errand(*this);
    cancelDrag();
    if (errand)
        cancelPress();
    if (errand)
        setState(m_isHovered, false, &BarItem::hoveredChanged);
    if (errand)
        setState(m_isDropHovered, false, &BarItem::dropHoveredChanged);
    if (errand)
        QGraphicsWidget::hideEvent(event);
}

void BarItem::setState(bool &state, bool value, void (BarItem::*changed)())
{
    if (state == value)
        return;
    state = value;
    Q_EMIT(this->*changed)();
}

void BarItem::retire()
{
    if (m_isRetired)
        return;
    m_isRetired = true;
    m_awaitedDrops.giveUp();
    const Errand errand(*this);
    cancelDrag();
    if (errand)
        cancelPress();
    if (!errand)
        return;
    hide();
    // Unless someone deletes it at once, it goes with the errand.
    Q_EMIT retired();
}

bool BarItem::isBusy() const
{
    return m_errands > 0 || holdsBusyItem(*this);
}

bool BarItem::holdsBusyItem(const QGraphicsItem &around)
{
    const QList<QGraphicsItem *> children = around.childItems();
    return std::any_of(children.begin(), children.end(), [](const QGraphicsItem *child) {
        const auto *item = dynamic_cast<const BarItem *>(child);
        return item ? item->isBusy() : holdsBusyItem(*child);
    });
}

QList<BarItem *> barItems(const QGraphicsItem &parent)
{
    QList<BarItem *> items;
    const QList<QGraphicsItem *> children = parent.childItems();
    for (QGraphicsItem *child : children) {
        if (!child->isVisible())
            continue;
        if (auto *item = dynamic_cast<BarItem *>(child))
            items.append(item);
        else
            items.append(barItems(*child));
    }
    std::stable_sort(items.begin(), items.end(), [](const BarItem *left, const BarItem *right) {
        return left->sceneBoundingRect().left() < right->sceneBoundingRect().left();
    });
    return items;
}

} // namespace moorline
