#include "dock/Pill.h"

#include "chrome/BarWidget.h"
#include "chrome/WidgetDivider.h"
#include "dock/BarMetrics.h"
#include "files/DragPayload.h"
#include "theme/Shapes.h"
#include "theme/Theme.h"

#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <QPainter>
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
qreal separatorWidth(const QGraphicsWidget *divider)
{
    return divider ? dividerPadding + dividerWidth + dividerPadding : weatherGap;
}

} // namespace

Pill::Pill(QGraphicsItem *parent)
    : QGraphicsWidget(parent)
    , m_shadow(shadowColor, shadowBlurRadius, shadowOffset)
    , m_dropColor(Theme::pillStroke)
{
    setAcceptDrops(true);
    layOut();
}

void Pill::setRow(const QList<Entry> &row)
{
    for (const Entry &entry : std::as_const(m_row))
        delete entry.widget;
    qDeleteAll(m_separators);
    m_separators.clear();
    m_row = row;
    for (qsizetype i = 0; i < m_row.size(); ++i) {
        if (i > 0)
            m_separators.append(readAsOneWidget(m_row[i - 1].kind, m_row[i].kind) ? nullptr : new WidgetDivider(this));
        m_row[i].widget->setParentItem(this);
        connect(m_row[i].widget, &BarWidget::naturalSizeChanged, this, &Pill::layOut);
    }
    layOut();
}

void Pill::layOut()
{
    qreal x = pillLeadingPadding;
    bool isFirst = true;
    for (qsizetype i = 0; i < m_row.size(); ++i) {
        BarWidget *widget = m_row[i].widget;
        // A widget that has nothing to show yet takes no place, and needs none kept from its neighbours.
        const bool isEmpty = widget->size().width() <= 0;
        widget->setVisible(!isEmpty);
        QGraphicsWidget *divider = i > 0 ? m_separators[i - 1] : nullptr;
        if (divider)
            divider->setVisible(!isEmpty && !isFirst);
        if (isEmpty)
            continue;
        if (!isFirst) {
            if (divider)
                divider->setGeometry(x + dividerPadding, 0, dividerWidth, pillHeight);
            x += separatorWidth(divider);
        }
        isFirst = false;
        widget->setPos(x, std::round((pillHeight - widget->size().height()) / 2));
        // Whole points keep the hairlines to the right of a text sharp.
        x += std::ceil(widget->size().width());
    }
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
    painter->setPen(QPen(m_dropHovering ? m_dropColor : Theme::pillStroke, 1));
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(continuousRoundedRect(pill.adjusted(inset, inset, -inset, -inset), pillCornerRadius - inset));
}

void Pill::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    if (!outline().contains(event->pos())) {
        event->ignore();
        return;
    }
    event->accept();
    Q_EMIT menuRequested(event->pos());
}

void Pill::dragEnterEvent(QGraphicsSceneDragDropEvent *event)
{
    const bool hasFiles = !loadDroppedFileURLs(*event->mimeData()).isEmpty();
    event->setAccepted(hasFiles);
    setDropHovering(hasFiles);
}

void Pill::dragLeaveEvent(QGraphicsSceneDragDropEvent *)
{
    setDropHovering(false);
}

void Pill::dropEvent(QGraphicsSceneDragDropEvent *event)
{
    setDropHovering(false);
    const QList<QUrl> files = loadDroppedFileURLs(*event->mimeData());
    // A pin is a reference: the source must not take the drop for a move and delete its file.
    event->setDropAction(event->possibleActions() & Qt::LinkAction ? Qt::LinkAction : Qt::CopyAction);
    event->setAccepted(!files.isEmpty());
    if (!files.isEmpty())
        Q_EMIT filesDropped(files);
}

void Pill::setDropHovering(bool hovering)
{
    if (hovering == m_dropHovering)
        return;
    m_dropHovering = hovering;
    update();
}

} // namespace moorline
