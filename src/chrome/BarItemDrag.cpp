#include "chrome/BarDrag.h"
#include "chrome/BarItemErrand.h"
#include "chrome/BarStage.h"

#include <QApplication>
#include <QGraphicsScene>

// How an item is dragged.

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

void BarItem::beginDrag(DragKind kind, const QPointF &place)
{
    const Errand errand(*this);
    cancelPress();
    // Destroyed with the item, but not under a QDrag, which may outlast it.
    const std::shared_ptr<BarDrag> held = errand ? holdDrag() : nullptr;
    if (!errand || !isVisible() || !m_isTouchable)
        return;
    // Before anyone hears of the drag, who may end it.
    m_drag = Drag{.kind = kind, .held = held};
    setState(m_isDragged, true, &BarItem::draggedChanged);
    if (!errand || !m_drag || kind == DragKind::inside)
        return;
    if (!m_drag->isCancelled)
        drag(place);
    if (errand)
        ungrabPointer(*this);
    if (errand)
        endDrag(m_drag->isCancelled || (held && held->wasCancelled()) ? DragEnd::cancelled : DragEnd::letGo);
}

std::shared_ptr<BarDrag> BarItem::holdDrag()
{
    BarStage *stage = effectiveStage();
    std::shared_ptr<BarDrag> held = stage ? stage->beginDrag() : nullptr;
    if (!held)
        return nullptr;
    connect(held.get(), &BarDrag::cancelled, this, [this] {
        const Errand errand(*this);
        const bool wasInside = isDraggedInside();
        cancelDrag();
        // A QDrag is still under way, and gives the pointer back at its end.
        if (errand && wasInside)
            ungrabPointer(*this);
    });
    return held;
}

void BarItem::cancelDrag()
{
    if (!m_drag)
        return;
    if (isDraggedInside())
        return endDrag(DragEnd::cancelled);
    m_drag->isCancelled = true;
    if (m_drag->held)
        m_drag->held->cancel();
}

void BarItem::endDrag(DragEnd end)
{
    if (!m_drag)
        return;
    const Errand errand(*this);
    m_drag.reset();
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

} // namespace moorline
