#pragma once

#include "chrome/BarWidget.h"
#include "chrome/IconButton.h"

#include <QPointer>

namespace moorline {

/// Icons side by side, each a button that stays the same object wherever it moves in the row. One that is carried over
/// another takes its place at once, and whoever keeps the order learns of it at once as well. Behind those that have
/// an order there may be others, which stay where they are.
class IconRow : public BarWidget {
    Q_OBJECT
public:
    using BarWidget::BarWidget;

    [[nodiscard]] qreal iconSize() const { return m_iconSize; }
    void setIconSize(qreal size) override;

    /// Higher than what is painted, as its buttons are. All of the bar while an icon is carried, for that one alone.
    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override;

protected:
    /// What the row shows from now on, by its ids.
    void show(const QStringList &ids);
    /// What stands behind that, from left to right. Those that stood there and do not any more retire.
    void setTail(const QList<IconButton *> &tail);
    /// Those that have an order, from left to right.
    [[nodiscard]] const QList<IconButton *> &icons() const { return m_icons; }

    /// The button of what is shown at `index`, new in the row.
    [[nodiscard]] virtual IconButton *makeButton(qsizetype index) = 0;
    /// What is shown at `index` has the same id as what the button showed before.
    virtual void renew(IconButton &button, qsizetype index) = 0;
    /// A button was carried to another place, or back to where it came from: this is the order now.
    virtual void keepOrder(const QStringList &ids);
    /// It was let go off the bar.
    virtual void removed(const IconButton &button);

    [[nodiscard]] bool takesReorder(const QString &id) const override;
    void reorderMoved(const QString &id, const QPointF &place) override;

private:
    /// The button with this id, removed from `buttons`; null when there is none.
    [[nodiscard]] static IconButton *takenOut(QList<IconButton *> &buttons, const QString &id);
    void welcome(IconButton &button);
    void setCarried(IconButton *carried);
    void letGo(const IconButton &button, bool isOff);
    /// Everything goes back to where it was before one was carried.
    void restore();
    [[nodiscard]] QStringList order() const;
    /// Which place an icon that stands at `from` takes when it is carried here, in the row's coordinates: the nearest
    /// one beside them all, and between two icons the one that it comes by first. There is at least one icon.
    [[nodiscard]] qsizetype placeNear(const QPointF &point, qsizetype from) const;
    [[nodiscard]] qreal placeOf(qsizetype index) const;
    /// Puts a button where another one is; those between slide up.
    void move(qsizetype from, qsizetype to);
    void layOut();

    qreal m_iconSize = 46;
    QList<IconButton *> m_icons;
    QList<IconButton *> m_tail;
    /// The one that is carried; null while none is.
    QPointer<IconButton> m_carried;
    /// Before it was, or the last one.
    QStringList m_orderBefore;
};

} // namespace moorline
