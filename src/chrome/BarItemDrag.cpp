#include "chrome/BarDrag.h"
#include "chrome/BarItemErrand.h"
#include "chrome/BarStage.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>

// How an item is dragged, and what is dropped on it.

namespace moorline {

namespace {

/// A drag that ends by anything but the release leaves Qt waiting for it.
void ungrabPointer(QGraphicsItem &item)
{
    if (item.scene() && item.scene()->mouseGrabberItem() == &item)
        item.ungrabMouse();
}

} // namespace

bool BarItem::isDrag(const QPointF &travel) const
{
    return travel.manhattanLength() >= QApplication::startDragDistance();
}

void BarItem::drag(const QPointF &)
{
}

void BarItem::dragTo(const QPointF &)
{
}

void BarItem::dragEnded(DragEnd)
{
}

void BarItem::beginDrag(const QPointF &place)
{
    const Errand errand(*this);
    cancelPress();
    BarStage *stage = errand ? effectiveStage() : nullptr;
    std::unique_ptr<BarDrag> held = stage ? stage->beginDrag() : nullptr;
    if (errand)
        setState(m_isDragged, true, &BarItem::draggedChanged);
    if (errand && m_dragKind == DragKind::inside)
        return beginDragInside(std::move(held));
    if (errand)
        drag(place);
    if (errand)
        ungrabPointer(*this);
    if (errand)
        finishDrag(errand, held && held->wasCancelled() ? DragEnd::cancelled : DragEnd::letGo);
}

void BarItem::beginDragInside(std::unique_ptr<BarDrag> held)
{
    m_isDraggedInside = true;
    m_drag = std::move(held);
    if (!m_drag)
        return;
    connect(m_drag.get(), &BarDrag::cancelled, this, [this] {
        const Errand errand(*this);
        endDragInside(DragEnd::cancelled);
        if (errand)
            ungrabPointer(*this);
    });
}

void BarItem::endDragInside(DragEnd end)
{
    if (!std::exchange(m_isDraggedInside, false))
        return;
    const Errand errand(*this);
    m_drag.reset();
    finishDrag(errand, end);
}

void BarItem::finishDrag(const Errand &errand, DragEnd end)
{
    if (errand)
        setState(m_isDragged, false, &BarItem::draggedChanged);
    // A drag swallows where the pointer went.
    if (errand)
        setState(m_isHovered, false, &BarItem::hoveredChanged);
    if (errand)
        dragEnded(end);
}

BarStage *BarItem::effectiveStage() const
{
    for (const QGraphicsItem *item = this; item; item = item->parentItem()) {
        const auto *barItem = dynamic_cast<const BarItem *>(item);
        if (barItem && barItem->m_stage)
            return barItem->m_stage;
    }
    return nullptr;
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

} // namespace moorline
