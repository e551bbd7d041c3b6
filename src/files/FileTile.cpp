#include "files/FileTile.h"

#include "theme/Shapes.h"
#include "theme/Symbols.h"
#include "theme/Theme.h"

#include <QPainter>

namespace moorline {

namespace {

/// The field under a drop, in points.
constexpr qreal fieldMargin = 4;
constexpr qreal fieldRadius = 13;
const QColor fieldColor = QColor::fromRgbF(1, 1, 1, 0.22F);

/// How much of an icon's height a symbol takes that is in its place.
constexpr qreal symbolPart = 0.7;

} // namespace

FileTile::FileTile(const FilesContext &context, QGraphicsItem *parent)
    : IconButton(
        {.icons = context.icons, .clock = context.clock, .pointer = context.pointer, .panelFrame = context.panelFrame},
        parent)
    , m_context(context)
{
    connect(this, &BarItem::dropHoveredChanged, this, [this] { update(growingRect()); });
}

void FileTile::setName(const QString &name, const QString &state)
{
    setHelpText(name);
    setDescription({.role = QAccessible::Button, .name = name, .state = state});
}

void FileTile::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    update(growingRect());
}

void FileTile::iconMissing()
{
    m_isIconMissing = true;
    update(growingRect());
}

QRectF FileTile::fieldRect() const
{
    return iconRect().adjusted(-fieldMargin, -fieldMargin, fieldMargin, fieldMargin);
}

QRectF FileTile::growingRect() const
{
    return grown(fieldRect(), largestScale);
}

void FileTile::paintBehind(QPainter &painter)
{
    if (!isDropHovered())
        return;
    const double scale = iconScale();
    painter.fillPath(continuousRoundedRect(grown(fieldRect(), scale), fieldRadius * scale), fieldColor);
}

void FileTile::paintOver(QPainter &painter)
{
    // Nor while an icon is waited for: it would be there for a moment.
    if (hasIcon() || !m_isIconMissing)
        return;
    const qreal pointSize = iconSize() * symbolPart * iconScale();
    const QSizeF size = m_context.symbols.size(m_symbol, pointSize);
    const QPointF middle = iconRect().center();
    m_context.symbols.draw(
        painter, middle - QPointF(size.width(), size.height()) / 2, m_symbol, pointSize, Theme::secondaryText);
}

} // namespace moorline
