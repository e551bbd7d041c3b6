#include "chrome/BarItemErrand.h"
#include "chrome/BarStage.h"
#include "chrome/ReorderDrag.h"

#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <utility>

// What is dropped on an item.

namespace moorline {

namespace {

/// The bar takes note of things: the source must not take the drop for a move and delete its file.
Qt::DropAction keepingAction(Qt::DropActions possible)
{
    if (possible.testFlag(Qt::LinkAction))
        return Qt::LinkAction;
    return possible.testFlag(Qt::CopyAction) ? Qt::CopyAction : Qt::IgnoreAction;
}

} // namespace

bool BarItem::takesDrop(const QStringList &) const
{
    return false;
}

bool BarItem::refusesDrop() const
{
    return false;
}

void BarItem::dropRefused()
{
}

bool BarItem::drop(const QMimeData &)
{
    return false;
}

bool BarItem::takesReorder(const QString &) const
{
    return false;
}

void BarItem::reorderMoved(const QString &, const QPointF &)
{
}

Qt::DropAction BarItem::answerTo(const QGraphicsSceneDragDropEvent &offer) const
{
    const BarStage *stage = effectiveStage();
    if (stage && stage->isDragCancelled())
        return Qt::IgnoreAction;
    if (const auto *reordered = dynamic_cast<const ReorderPayload *>(offer.mimeData()))
        return takesReorder(reordered->id()) ? Qt::MoveAction : Qt::IgnoreAction;
    return keepingAction(offer.possibleActions());
}

bool BarItem::dropCame(QGraphicsSceneDragDropEvent &offer)
{
    const bool isReorder = dynamic_cast<const ReorderPayload *>(offer.mimeData());
    const Qt::DropAction answer = answerTo(offer);
    const bool isMeant = answer != Qt::IgnoreAction && (isReorder || takesDrop(offer.mimeData()->formats()));
    m_isRefusing = isMeant && !isReorder && refusesDrop();
    const bool takes = isMeant && !m_isRefusing;
    offer.setDropAction(answer);
    // The scene goes on to the item below when this one does not let the drag in; the source hears of moves alone.
    offer.setAccepted(offer.type() == QEvent::GraphicsSceneDragEnter ? isMeant : takes);
    setState(m_isDropHovered, takes && !isReorder, &BarItem::dropHoveredChanged);
    return takes;
}

void BarItem::dragEnterEvent(QGraphicsSceneDragDropEvent *event)
{
    dropCame(*event);
}

void BarItem::dragMoveEvent(QGraphicsSceneDragDropEvent *event)
{
    const Errand errand(*this);
    const auto *reordered = dynamic_cast<const ReorderPayload *>(event->mimeData());
    // Asked anew: the keys that are held say what the source would do.
    if (dropCame(*event) && errand && reordered)
        reorderMoved(reordered->id(), event->scenePos());
}

void BarItem::dragLeaveEvent(QGraphicsSceneDragDropEvent *)
{
    const Errand errand(*this);
    setState(m_isDropHovered, false, &BarItem::dropHoveredChanged);
    const BarStage *stage = errand ? effectiveStage() : nullptr;
    const bool wasRefusing = std::exchange(m_isRefusing, false);
    // A source that was told no leaves when the button is let go, as it does when the pointer goes on with it.
    if (wasRefusing && stage && stage->restingPointer())
        dropRefused();
}

void BarItem::dropEvent(QGraphicsSceneDragDropEvent *event)
{
    const Errand errand(*this);
    setState(m_isDropHovered, false, &BarItem::dropHoveredChanged);
    const Qt::DropAction answer = errand ? answerTo(*event) : Qt::IgnoreAction;
    event->setDropAction(answer);
    const bool isReorder = dynamic_cast<const ReorderPayload *>(event->mimeData());
    event->setAccepted(answer != Qt::IgnoreAction && (isReorder || drop(*event->mimeData())));
}

} // namespace moorline
