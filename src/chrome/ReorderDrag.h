#pragma once

#include <QMimeData>

QT_BEGIN_NAMESPACE
class QGraphicsItem;
class QPixmap;
QT_END_NAMESPACE

namespace moorline {

/// What is carried while an item of the bar is dragged to another place in its row. Its id stays in this process:
/// other programs are offered a format of the bar's own, and no data in it.
class ReorderPayload final : public QMimeData {
public:
    explicit ReorderPayload(QString id);

    [[nodiscard]] const QString &id() const { return m_id; }
    [[nodiscard]] QStringList formats() const override;

private:
    QString m_id;
};

/// Carries what has this id away with the pointer, and returns when it was let go or cancelled: for the drag() of an
/// item of DragKind::out. `item` may go meanwhile. Nothing happens in a scene that no view shows.
///
/// `picture` goes with the pointer, which holds it at `hotSpot`, in points from its top left corner.
void carryReordered(const QGraphicsItem &item, const QString &id, const QPixmap &picture, const QPoint &hotSpot);

} // namespace moorline
