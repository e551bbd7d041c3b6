#include "chrome/ReorderDrag.h"

#include <QDrag>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>

namespace moorline {

ReorderPayload::ReorderPayload(QString id)
    : m_id(std::move(id))
{
}

QStringList ReorderPayload::formats() const
{
    return {QStringLiteral("app.moorline.Moorline.reorder")};
}

void carryReordered(const QGraphicsItem &item, const QString &id, const QPixmap &picture, const QPoint &hotSpot)
{
    QGraphicsView *view = item.scene() ? item.scene()->views().value(0) : nullptr;
    if (!view)
        return;
    // Qt deletes it when it is over.
    auto *drag = new QDrag(view);
    drag->setMimeData(new ReorderPayload(id));
    drag->setPixmap(picture);
    drag->setHotSpot(hotSpot);
    drag->exec(Qt::MoveAction);
}

} // namespace moorline
