#pragma once

#include "chrome/BarItem.h"
#include "settings/WidgetKind.h"
#include "theme/Shadow.h"

#include <QUrl>

namespace moorline {

class BarWidget;
class WidgetDivider;

/// The rounded pill: a row of widgets with a divider before each but the first.
class Pill final : public BarItem {
    Q_OBJECT
public:
    struct Entry {
        WidgetKind kind;
        BarWidget *widget;
    };

    explicit Pill(QGraphicsItem *parent = nullptr);

    /// Takes the widgets over. Those that stand here already stay what they are; those that stood here and do not any
    /// more retire.
    void setRow(QList<Entry> row);
    [[nodiscard]] const QList<Entry> &row() const { return m_row; }
    /// The side of every icon in the row, in points.
    void setIconSize(qreal size);
    [[nodiscard]] qreal iconSize() const { return m_iconSize; }
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
    /// What can be touched in the row stands elsewhere now, perhaps.
    void itemsMoved();
    void filesDropped(const QList<QUrl> &files);

protected:
    [[nodiscard]] bool takesDrop(const QStringList &formats) const override;
    bool drop(const QMimeData &data) override;

private:
    void takeIn(BarWidget &widget);
    void letGo(BarWidget &widget);
    void separate();
    void layOut();
    /// Gives the widget and the divider before it their place, which begins at `x`, and answers where it ends.
    [[nodiscard]] qreal place(BarWidget &widget, WidgetDivider *divider, qreal x, bool isFirst) const;

    QList<Entry> m_row;
    /// Dividers and gaps are as many as there are widgets, less one; a gap is null.
    QList<WidgetDivider *> m_separators;
    qreal m_iconSize;
    /// Until all widgets have taken what they were told.
    bool m_isLayoutSuspended = false;
    Shadow m_shadow;
    QRectF m_room;
    QColor m_dropColor;
};

} // namespace moorline
