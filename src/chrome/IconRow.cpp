#include "chrome/IconRow.h"

#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

/// The bar's own reckoning of what its icons take counts on it.
constexpr qreal iconGap = 6;

} // namespace

void IconRow::setIconSize(qreal size)
{
    if (size == m_iconSize)
        return;
    m_iconSize = size;
    for (IconButton *button : m_icons + m_tail)
        button->setIconSize(size);
    layOut();
}

IconButton *IconRow::takenOut(QList<IconButton *> &buttons, const QString &id)
{
    const auto found =
        std::find_if(buttons.begin(), buttons.end(), [&id](const IconButton *one) { return one->id() == id; });
    if (found == buttons.end())
        return nullptr;
    IconButton *button = *found;
    buttons.erase(found);
    return button;
}

void IconRow::welcome(IconButton &button)
{
    connect(&button, &QGraphicsObject::xChanged, this, &BarWidget::itemsMoved);
    connect(&button, &BarItem::draggedChanged, this, [this, carried = &button] {
        if (!carried->isDragged())
            return;
        m_orderBefore = order();
        setCarried(carried);
    });
    connect(&button, &IconButton::letGo, this, [this, carried = &button](bool isOff) { letGo(*carried, isOff); });
    connect(&button, &IconButton::carryingCancelled, this, &IconRow::restore);
}

void IconRow::show(const QStringList &ids)
{
    const QList<IconButton *> before = std::exchange(m_icons, {});
    QList<IconButton *> standing = before;
    for (qsizetype i = 0; i < ids.size(); ++i) {
        IconButton *button = takenOut(standing, ids[i]);
        if (button) {
            renew(*button, i);
        } else {
            button = makeButton(i);
            welcome(*button);
        }
        button->setIconSize(m_iconSize);
        m_icons.append(button);
    }
    for (IconButton *button : std::as_const(standing))
        button->retire();
    layOut();
    if (m_icons != before)
        Q_EMIT itemsMoved();
}

void IconRow::setTail(const QList<IconButton *> &tail)
{
    for (IconButton *button : std::exchange(m_tail, tail)) {
        if (!m_tail.contains(button))
            button->retire();
    }
    for (IconButton *button : std::as_const(m_tail))
        button->setIconSize(m_iconSize);
    layOut();
}

void IconRow::keepOrder(const QStringList &)
{
}

void IconRow::removed(const IconButton &)
{
}

bool IconRow::takesReorder(const QString &id) const
{
    return m_carried && m_carried->id() == id;
}

void IconRow::reorderMoved(const QString &, const QPointF &place)
{
    const qsizetype from = m_icons.indexOf(m_carried);
    if (from < 0)
        return;
    const qsizetype to = placeNear(mapFromScene(place), from);
    if (to == from)
        return;
    move(from, to);
    keepOrder(order());
}

QStringList IconRow::order() const
{
    QStringList ids;
    for (const IconButton *button : m_icons)
        ids.append(button->id());
    return ids;
}

void IconRow::setCarried(IconButton *carried)
{
    prepareGeometryChange();
    m_carried = carried;
}

void IconRow::letGo(const IconButton &button, bool isOff)
{
    if (m_carried == &button)
        setCarried(nullptr);
    if (isOff)
        removed(button);
}

void IconRow::restore()
{
    setCarried(nullptr);
    qsizetype to = 0;
    for (const QString &id : std::as_const(m_orderBefore)) {
        const auto from =
            std::find_if(m_icons.begin() + to, m_icons.end(), [&id](const IconButton *one) { return one->id() == id; });
        if (from != m_icons.end())
            move(from - m_icons.begin(), to++);
    }
    keepOrder(order());
}

qreal IconRow::placeOf(qsizetype index) const
{
    return qreal(index) * (IconButton::sizeFor(m_iconSize).width() + iconGap);
}

qsizetype IconRow::placeNear(const QPointF &point, qsizetype from) const
{
    // Where the icons lead, and not where they are on the way there.
    const auto reached = qsizetype(std::floor(point.x() / placeOf(1)));
    const qsizetype left = std::clamp<qsizetype>(reached, 0, m_icons.size() - 1);
    const bool isBesideIt = point.x() >= placeOf(left) + m_iconSize && left < m_icons.size() - 1;
    return isBesideIt && from > left ? left + 1 : left;
}

void IconRow::move(qsizetype from, qsizetype to)
{
    m_icons.move(from, to);
    for (qsizetype i = 0; i < m_icons.size(); ++i)
        m_icons[i]->slideTo(placeOf(i));
}

QRectF IconRow::boundingRect() const
{
    const QRectF row = rect().marginsAdded({0, IconButton::reach, 0, IconButton::reach});
    const QGraphicsWidget *bar = m_carried ? parentWidget() : nullptr;
    // A quick pointer is beyond the last icon before it was seen on it.
    return bar ? row.united(mapRectFromParent(bar->rect())) : row;
}

QPainterPath IconRow::shape() const
{
    QPainterPath area;
    area.addRect(boundingRect());
    return area;
}

void IconRow::layOut()
{
    const QList<IconButton *> buttons = m_icons + m_tail;
    for (qsizetype i = 0; i < buttons.size(); ++i)
        buttons[i]->placeAt(placeOf(i));
    const qreal height = IconButton::sizeFor(m_iconSize).height();
    setNaturalSize(buttons.isEmpty() ? QSizeF(0, 0) : QSizeF(placeOf(buttons.size()) - iconGap, height));
}

} // namespace moorline
