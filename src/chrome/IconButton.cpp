#include "chrome/IconButton.h"

#include "chrome/ReorderDrag.h"
#include "theme/DevicePixels.h"

#include <QPainter>
#include <QPixmap>
#include <algorithm>

namespace moorline {

namespace {

constexpr qreal restScale = 1;
constexpr qreal hoverScale = 1.08;
constexpr qreal dropScale = 1.16;
constexpr Spring growth{.response = 0.25, .damping = 0.7};

constexpr qreal carriedOpacity = 0.35;
constexpr Spring fading{.response = 0.3, .damping = 0.7};

constexpr Spring sliding{.response = 0.3, .damping = 0.75};

constexpr qreal dotGap = 3;
constexpr qreal dotSize = 3;

} // namespace

IconButton::IconButton(const Context &context, QGraphicsItem *parent)
    : BarItem(parent)
    , m_icon(context.icons)
    , m_scale(context.clock, growth, restScale, [this] { update(growingRect()); })
    , m_opacity(context.clock, fading, 1, [this] { update(growingRect()); })
    , m_place(context.clock, sliding, 0, [this] { setX(m_place.value()); })
    , m_watcher(context.clock, context.pointer, context.panelFrame)
{
    setTouchable(true);
    setAcceptDrops(true);
    connect(this, &BarItem::hoveredChanged, this, &IconButton::updateScale);
    connect(this, &BarItem::dropHoveredChanged, this, &IconButton::updateScale);
    connect(this, &BarItem::draggedChanged, this, [this] { m_opacity.moveTo(isDragged() ? carriedOpacity : 1); });
    connect(&m_icon, &IconImage::changed, this, [this] { update(growingRect()); });
    connect(&m_icon, &IconImage::missing, this, [this] { iconMissing(); });
    resize(sizeFor(m_iconSize));
}

QSizeF IconButton::sizeFor(qreal iconSize)
{
    // The dot has its place whether it is there or not.
    return {iconSize, iconSize + dotGap + dotSize};
}

void IconButton::setIconSize(qreal size)
{
    if (size == m_iconSize)
        return;
    prepareGeometryChange();
    m_iconSize = size;
    iconSizeChanged();
    m_icon.show(m_iconKind, m_iconSubject, size);
    resize(sizeFor(size));
}

void IconButton::iconSizeChanged()
{
}

void IconButton::iconMissing()
{
}

void IconButton::showIcon(IconKind kind, const QString &subject)
{
    m_iconKind = kind;
    m_iconSubject = subject;
    m_icon.show(kind, subject, m_iconSize);
}

void IconButton::placeAt(qreal x)
{
    if (x != m_place.target())
        m_place.jumpTo(x);
}

void IconButton::slideTo(qreal x)
{
    m_place.moveTo(x);
}

void IconButton::updateScale()
{
    if (isDropHovered())
        m_scale.moveTo(dropScale);
    else
        m_scale.moveTo(isHovered() ? hoverScale : restScale);
}

void IconButton::drag(const QPointF &place)
{
    m_wasLetGoOff.reset();
    m_watcher.begin([this](bool isOff) {
        // The end of the drag itself may be heard of later, and be another one.
        if (isDragged())
            m_wasLetGoOff = isOff;
        else
            Q_EMIT letGo(isOff);
    });
    const QPointF held(std::clamp(place.x(), 0.0, m_iconSize), std::clamp(place.y(), 0.0, m_iconSize));
    carryReordered(*this, id(), QPixmap::fromImage(m_icon.image()), held.toPoint());
}

void IconButton::dragEnded(DragEnd end)
{
    switch (end) {
    case DragEnd::letGo:
        if (m_wasLetGoOff)
            Q_EMIT letGo(*m_wasLetGoOff);
        return;
    case DragEnd::cancelled:
        m_watcher.stop();
        Q_EMIT carryingCancelled();
        return;
    }
}

QRectF IconButton::iconRect() const
{
    return {0, 0, m_iconSize, m_iconSize};
}

QRectF IconButton::growingRect() const
{
    return grown(iconRect(), largestScale);
}

QRectF IconButton::dotRect() const
{
    return {(m_iconSize - dotSize) / 2, m_iconSize + dotGap, dotSize, dotSize};
}

QRectF IconButton::touchRect() const
{
    return QRectF(QPointF(0, 0), sizeFor(m_iconSize)).marginsAdded({0, reach, 0, reach});
}

QRectF IconButton::boundingRect() const
{
    return touchRect().united(growingRect());
}

QPainterPath IconButton::shape() const
{
    QPainterPath area;
    area.addRect(touchRect());
    return area;
}

void IconButton::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->save();
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    paintBehind(*painter);
    painter->setOpacity(painter->opacity() * m_opacity.value());
    paintIcon(*painter);
    paintOver(*painter);
    painter->restore();
}

void IconButton::paintBehind(QPainter &)
{
}

void IconButton::paintOver(QPainter &)
{
}

void IconButton::paintIcon(QPainter &painter)
{
    const QImage &image = m_icon.at(deviceScale(painter));
    if (image.isNull())
        return;
    const QRectF place = iconRect();
    const bool isInItsSize = qFuzzyCompare(image.devicePixelRatio(), deviceScale(painter))
        && image.deviceIndependentSize().toSize() == place.size().toSize();
    if (m_scale.value() == restScale && isInItsSize)
        painter.drawImage(snappedToPixels(painter, place.topLeft()), image);
    else
        painter.drawImage(grown(place, m_scale.value()), image);
}

QRectF grown(const QRectF &rect, qreal scale)
{
    const QSizeF more = rect.size() * (scale - 1) / 2;
    return rect.marginsAdded({more.width(), more.height(), more.width(), more.height()});
}

} // namespace moorline
