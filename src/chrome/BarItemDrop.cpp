#include "chrome/BarItemErrand.h"
#include "chrome/BarStage.h"
#include "chrome/ReorderDrag.h"

#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <utility>

// What is dropped on an item.

namespace moorline {

bool BarItem::takesDrop(const QStringList &) const
{
    return false;
}

Qt::DropAction BarItem::dropAnswer(Qt::DropActions possible) const
{
    for (const Qt::DropAction action : {Qt::CopyAction, Qt::MoveAction, Qt::LinkAction}) {
        if (possible.testFlag(action))
            return action;
    }
    return Qt::IgnoreAction;
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
    return dropAnswer(offer.possibleActions());
}

bool BarItem::dropCame(QGraphicsSceneDragDropEvent &offer)
{
    const bool isReorder = dynamic_cast<const ReorderPayload *>(offer.mimeData());
    const Qt::DropAction answer = answerTo(offer);
    const bool isPossible = answer != Qt::IgnoreAction;
    const bool isMeant = isReorder ? isPossible : takesDrop(offer.mimeData()->formats());
    m_isRefusing = isMeant && isPossible && !isReorder && refusesDrop();
    const bool takes = isMeant && isPossible && !m_isRefusing;
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
    event->setAccepted(answer != Qt::IgnoreAction && takeDropped(*event->mimeData(), answer));
}

bool BarItem::takeDropped(const QMimeData &data, Qt::DropAction answer)
{
    if (dynamic_cast<const ReorderPayload *>(&data))
        return true;
    const auto *arriving = dynamic_cast<const ArrivingDrop *>(&data);
    if (!arriving)
        return drop(data);
    if (m_isRetired || !takesDrop(arriving->formats()))
        return false;
    m_awaitedDrops.await(arriving->transfer(), [this, answer](const QMimeData &arrived) {
        const Errand errand(*this);
        return drop(arrived) ? answer : Qt::IgnoreAction;
    });
    return true;
}

} // namespace moorline
