#include "chrome/BarItem.h"

#include "chrome/BarHolds.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QGraphicsSceneMouseEvent>
#include <QMetaMethod>
#include <QMimeData>
#include <algorithm>

namespace moorline {

/// Something that the item does for the pointer, in which anything may happen to it: as long as it lasts, a retired
/// item is not deleted.
class BarItem::Errand {
public:
    explicit Errand(BarItem &item)
        : m_item(&item)
    {
        ++item.m_errands;
    }
    Q_DISABLE_COPY_MOVE(Errand)
    ~Errand()
    {
        if (!m_item)
            return;
        --m_item->m_errands;
        for (QGraphicsItem *item = m_item; item; item = item->parentItem()) {
            auto *barItem = dynamic_cast<BarItem *>(item);
            if (barItem && barItem->m_isRetired && !barItem->isBusy())
                barItem->deleteLater();
        }
    }

    /// False when the item was destroyed meanwhile.
    [[nodiscard]] explicit operator bool() const { return !m_item.isNull(); }

private:
    QPointer<BarItem> m_item;
};

BarItem::BarItem(QGraphicsItem *parent)
    : QGraphicsWidget(parent)
{
    setAcceptedMouseButtons(Qt::NoButton);
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

void BarItem::click()
{
    const Errand errand(*this);
    Q_EMIT clicked();
}

void BarItem::begin(const QGraphicsSceneMouseEvent &event, bool canClick)
{
    // Another button, pressed beside the first, spoils the click.
    if (m_press || event.button() != Qt::LeftButton)
        return cancelPress();
    m_press = Press{.place = event.pos(), .screenPlace = event.screenPos(), .canClick = canClick};
    setState(m_isPressed, canClick, &BarItem::pressedChanged);
}

void BarItem::cancelPress()
{
    m_press.reset();
    setState(m_isPressed, false, &BarItem::pressedChanged);
}

void BarItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    begin(*event, true);
}

void BarItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    event->accept();
    begin(*event, false);
}

void BarItem::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (!m_press)
        return;
    if (m_isDraggable && isDrag(QPointF(event->screenPos()) - m_press->screenPlace))
        runDrag(m_press->place);
    else
        setState(m_isPressed, m_press->canClick && shape().contains(event->pos()), &BarItem::pressedChanged);
}

void BarItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
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
    cancelPress();
    if (errand)
        QGraphicsWidget::ungrabMouseEvent(event);
}

bool BarItem::isDrag(const QPointF &travel) const
{
    return travel.manhattanLength() >= QApplication::startDragDistance();
}

void BarItem::drag(const QPointF &)
{
}

void BarItem::runDrag(const QPointF &place)
{
    const Errand errand(*this);
    cancelPress();
    BarHolds *holds = effectiveHolds();
    const auto token = holds ? holds->take() : BarHolds::Token();
    if (errand)
        setState(m_isDragged, true, &BarItem::draggedChanged);
    if (errand)
        drag(place);
    // The drag swallowed the release, and where the pointer went.
    if (errand && scene() && scene()->mouseGrabberItem() == this)
        ungrabMouse();
    if (errand)
        setState(m_isHovered, false, &BarItem::hoveredChanged);
    if (errand)
        setState(m_isDragged, false, &BarItem::draggedChanged);
}

BarHolds *BarItem::effectiveHolds() const
{
    for (const QGraphicsItem *item = this; item; item = item->parentItem()) {
        const auto *barItem = dynamic_cast<const BarItem *>(item);
        if (barItem && barItem->m_holds)
            return barItem->m_holds;
    }
    return nullptr;
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
    static const QMetaMethod request = QMetaMethod::fromSignal(&BarItem::menuRequested);
    if (!isSignalConnected(request) || !shape().contains(event->pos())) {
        event->ignore();
        return;
    }
    event->accept();
    const Errand errand(*this);
    Q_EMIT menuRequested(event->pos());
}

bool BarItem::takesDrop(const QStringList &) const
{
    return false;
}

bool BarItem::drop(const QMimeData &)
{
    return false;
}

void BarItem::dragEnterEvent(QGraphicsSceneDragDropEvent *event)
{
    const bool takes = takesDrop(event->mimeData()->formats());
    event->setAccepted(takes);
    setState(m_isDropHovered, takes, &BarItem::dropHoveredChanged);
}

void BarItem::dragLeaveEvent(QGraphicsSceneDragDropEvent *)
{
    setState(m_isDropHovered, false, &BarItem::dropHoveredChanged);
}

void BarItem::dropEvent(QGraphicsSceneDragDropEvent *event)
{
    const Errand errand(*this);
    setState(m_isDropHovered, false, &BarItem::dropHoveredChanged);
    // The bar takes note of things: the source must not take the drop for a move and delete its file.
    event->setDropAction(event->possibleActions() & Qt::LinkAction ? Qt::LinkAction : Qt::CopyAction);
    event->setAccepted(errand && drop(*event->mimeData()));
}

void BarItem::hideEvent(QHideEvent *event)
{
    const Errand errand(*this);
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
    const Errand errand(*this);
    cancelPress();
    if (!errand)
        return;
    hide();
    // Unless someone deletes it at once, it goes with the errand.
    Q_EMIT retired();
}

bool BarItem::isBusy() const
{
    const auto isBusyItem = [](const QGraphicsItem *item) {
        const auto *barItem = dynamic_cast<const BarItem *>(item);
        return barItem && barItem->isBusy();
    };
    const QList<QGraphicsItem *> children = childItems();
    return m_errands > 0 || std::any_of(children.begin(), children.end(), isBusyItem);
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
