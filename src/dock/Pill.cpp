#include "dock/Pill.h"

#include "chrome/BarWidget.h"
#include "chrome/WidgetDivider.h"
#include "dock/BarMetrics.h"
#include "files/DroppedFiles.h"
#include "theme/Shapes.h"
#include "theme/Theme.h"

#include <QPainter>
#include <QScopedValueRollback>
#include <algorithm>
#include <cmath>

namespace moorline {

using namespace BarMetrics;

namespace {

constexpr qreal shadowBlurRadius = 22;
constexpr QPointF shadowOffset{0, 14};
const QColor shadowColor = QColor::fromRgbF(0, 0, 0, 0.55F);

bool readAsOneWidget(WidgetKind previous, WidgetKind next)
{
    return previous == WidgetKind::weather && next == WidgetKind::forecast;
}

/// The room between two widgets.
qreal separatorWidth(const WidgetDivider *divider)
{
    return divider ? dividerPadding + WidgetDivider::lineWidth + dividerPadding : weatherGap;
}

bool standsIn(const QList<Pill::Entry> &row, const BarWidget *widget)
{
    return std::any_of(row.begin(), row.end(), [widget](const Pill::Entry &entry) { return entry.widget == widget; });
}

} // namespace

Pill::Pill(QGraphicsItem *parent)
    : BarItem(parent)
    , m_iconSize(largestIcon)
    , m_shadow(shadowColor, shadowBlurRadius, shadowOffset)
    , m_dropColor(Theme::pillStroke)
{
    setAcceptDrops(true);
    setDescription({.role = QAccessible::ToolBar, .name = QStringLiteral("Moorline"), .state = {}});
    connect(this, &BarItem::dropHoveredChanged, this, [this] { update(); });
    layOut();
}

void Pill::setRow(QList<Entry> row)
{
    {
        // Until the dividers are as many as the row wants.
        const QScopedValueRollback batch(m_isLayoutSuspended, true);
        const QList<Entry> before = std::exchange(m_row, row);
        for (const Entry &entry : before) {
            if (!standsIn(row, entry.widget))
                letGo(*entry.widget);
        }
        for (const Entry &entry : std::as_const(row)) {
            if (!standsIn(before, entry.widget))
                takeIn(*entry.widget);
        }
        separate();
    }
    layOut();
}

void Pill::takeIn(BarWidget &widget)
{
    widget.setIconSize(m_iconSize);
    widget.setParentItem(this);
    connect(&widget, &BarWidget::naturalSizeChanged, this, &Pill::layOut);
    connect(&widget, &BarWidget::itemsMoved, this, &Pill::itemsMoved);
    // The event alone would have the interface built, whether anyone asks or not.
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent created(&widget, QAccessible::ObjectCreated);
    QAccessible::updateAccessibility(&created);
}

void Pill::letGo(BarWidget &widget)
{
    disconnect(&widget, nullptr, this, nullptr);
    widget.retire();
}

void Pill::separate()
{
    QList<WidgetDivider *> spare = std::exchange(m_separators, {});
    spare.removeAll(nullptr);
    for (qsizetype i = 1; i < m_row.size(); ++i) {
        if (readAsOneWidget(m_row[i - 1].kind, m_row[i].kind))
            m_separators.append(nullptr);
        else
            m_separators.append(spare.isEmpty() ? new WidgetDivider(this) : spare.takeFirst());
    }
    for (WidgetDivider *divider : std::as_const(spare)) {
        divider->hide();
        divider->deleteLater();
    }
}

void Pill::setIconSize(qreal size)
{
    m_iconSize = size;
    {
        const QScopedValueRollback batch(m_isLayoutSuspended, true);
        for (const Entry &entry : std::as_const(m_row))
            entry.widget->setIconSize(size);
    }
    layOut();
}

qreal Pill::place(BarWidget &widget, WidgetDivider *divider, qreal x, bool isFirst) const
{
    if (!isFirst) {
        if (divider)
            divider->setGeometry(QRectF(x + dividerPadding, 0, WidgetDivider::lineWidth, pillHeight));
        x += separatorWidth(divider);
    }
    widget.setPos(x, std::round((pillHeight - widget.size().height()) / 2));
    // Whole points keep the hairlines to the right of a text sharp.
    return x + std::ceil(widget.size().width());
}

void Pill::layOut()
{
    if (m_isLayoutSuspended)
        return;
    qreal x = pillLeadingPadding;
    bool isFirst = true;
    for (qsizetype i = 0; i < m_row.size(); ++i) {
        BarWidget &widget = *m_row[i].widget;
        // A widget that has nothing to show yet takes no place, and needs none kept from its neighbours.
        const bool isEmpty = widget.size().width() <= 0;
        widget.setVisible(!isEmpty);
        WidgetDivider *divider = i > 0 ? m_separators[i - 1] : nullptr;
        if (divider)
            divider->setVisible(!isEmpty && !isFirst);
        if (isEmpty)
            continue;
        x = place(widget, divider, x, isFirst);
        isFirst = false;
    }
    Q_EMIT itemsMoved();
    const QSizeF natural(x + pillTrailingPadding, pillHeight);
    if (natural == size())
        return;
    prepareGeometryChange();
    resize(natural);
    Q_EMIT widthChanged();
}

void Pill::setRoom(const QRectF &room)
{
    if (room == m_room)
        return;
    m_room = room;
    update();
}

QPainterPath Pill::outline() const
{
    return continuousRoundedRect(QRectF(QPointF(0, 0), size()), pillCornerRadius);
}

QRectF Pill::boundingRect() const
{
    // Three standard deviations, beyond which nothing of the blur is left to see.
    constexpr qreal reach = 1.5 * shadowBlurRadius;
    const QMarginsF blur(reach, reach, reach, reach);
    const QRectF pill(QPointF(0, 0), size());
    return pill.united(pill.translated(shadowOffset).marginsAdded(blur));
}

void Pill::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const QRectF pill(QPointF(0, 0), size());
    m_shadow.paint(*painter, outline(), m_room);
    painter->fillPath(outline(), Theme::pillFill);
    const qreal inset = 0.5;
    painter->setPen(QPen(isDropHovered() ? m_dropColor : Theme::pillStroke, 1));
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(continuousRoundedRect(pill.adjusted(inset, inset, -inset, -inset), pillCornerRadius - inset));
}

bool Pill::takesDrop(const QStringList &formats) const
{
    return mayHoldFiles(formats);
}

bool Pill::drop(const QMimeData &data)
{
    const QList<QUrl> files = loadDroppedFileURLs(data);
    if (!files.isEmpty())
        Q_EMIT filesDropped(files);
    return !files.isEmpty();
}

} // namespace moorline
