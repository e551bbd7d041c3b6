#pragma once

#include "settings/WidgetKind.h"
#include "theme/Shadow.h"

#include <QGraphicsWidget>
#include <QUrl>

namespace moorline {

class BarWidget;

/// The rounded pill: a row of widgets with a divider before each but the first.
class Pill final : public QGraphicsWidget {
    Q_OBJECT
public:
    struct Entry {
        WidgetKind kind;
        BarWidget *widget;
    };

    explicit Pill(QGraphicsItem *parent = nullptr);

    /// Takes the widgets over and deletes those that stood here before.
    void setRow(const QList<Entry> &row);
    [[nodiscard]] const QList<Entry> &row() const { return m_row; }
    /// What the shadow has to stay inside of, in the pill's own coordinates.
    void setRoom(const QRectF &room);
    /// The outline while files hover over the pill.
    void setDropColor(const QColor &color) { m_dropColor = color; }
    /// The shape of the pill in its own coordinates.
    [[nodiscard]] QPainterPath outline() const;

    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override { return outline(); }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

Q_SIGNALS:
    /// The row took another width; the pill already has it.
    void widthChanged();
    void filesDropped(const QList<QUrl> &files);
    /// `place` is in the pill's own coordinates.
    void menuRequested(const QPointF &place);

protected:
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent *event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent *event) override;
    void dropEvent(QGraphicsSceneDragDropEvent *event) override;

private:
    void layOut();
    void setDropHovering(bool hovering);

    QList<Entry> m_row;
    /// Dividers and gaps are as many as there are widgets, less one; a gap is null.
    QList<QGraphicsWidget *> m_separators;
    Shadow m_shadow;
    QRectF m_room;
    QColor m_dropColor;
    bool m_dropHovering = false;
};

} // namespace moorline
