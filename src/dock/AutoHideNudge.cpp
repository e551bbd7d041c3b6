#include "dock/AutoHideNudge.h"

#include "dock/BarMetrics.h"
#include "theme/Shapes.h"
#include "theme/Symbols.h"
#include "theme/Text.h"
#include "theme/Theme.h"

#include <QCursor>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <cmath>

namespace moorline {

namespace {

constexpr qreal padding = 12;
constexpr qreal spacing = 6;
constexpr qreal buttonHeight = 20;
constexpr qreal buttonPadding = 8;
/// Between the symbol and the text of the button.
constexpr qreal buttonSpacing = 4;
constexpr qreal symbolSize = 9;

const TextStyle textStyle{.size = 11};
const TextStyle buttonStyle{.size = 11, .weight = QFont::Medium};
const QColor textColor = QColor::fromRgbF(1, 1, 1, 0.7F);
const QString buttonSymbol = QStringLiteral("arrow.up.right");

QPainterPath capsule(const QRectF &rect)
{
    return continuousRoundedRect(rect, rect.height() / 2);
}

} // namespace

AutoHideNudge::AutoHideNudge(const Symbols &symbols, QGraphicsItem *parent)
    : QGraphicsWidget(parent)
    , m_symbols(symbols)
    , m_text(tr("The macOS Dock is sitting underneath this one. Turn on auto-hide to clear the space."))
    , m_buttonText(tr("Hide the macOS Dock"))
{
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
    setToolTip(m_text);
}

qreal AutoHideNudge::naturalWidth() const
{
    return std::ceil(padding + textSize(m_text, textStyle).width() + spacing + buttonWidth() + padding);
}

QPainterPath AutoHideNudge::outline() const
{
    return capsule(QRectF(QPointF(0, 0), size()));
}

qreal AutoHideNudge::buttonWidth() const
{
    return std::ceil(buttonPadding + m_symbols.size(buttonSymbol, symbolSize).width() + buttonSpacing
        + textSize(m_buttonText, buttonStyle).width() + buttonPadding);
}

QRectF AutoHideNudge::buttonRect() const
{
    const qreal width = std::min(buttonWidth(), size().width() - 2 * padding);
    return {size().width() - padding - width, (size().height() - buttonHeight) / 2, width, buttonHeight};
}

void AutoHideNudge::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->fillPath(outline(), Theme::pillFill);
    const QString text = elided(m_text, textStyle, buttonRect().left() - spacing - padding);
    const qreal y = (size().height() - textSize(text, textStyle).height()) / 2;
    drawText(*painter, {padding, y}, text, textStyle, textColor);
    paintButton(*painter);
}

void AutoHideNudge::paintButton(QPainter &painter) const
{
    const QRectF button = buttonRect();
    const float opacity = m_pressed ? 0.1F : m_hovered ? 0.24F : 0.16F;
    painter.fillPath(capsule(button), QColor::fromRgbF(1, 1, 1, opacity));
    const QSizeF symbol = m_symbols.size(buttonSymbol, symbolSize);
    const qreal symbolLeft = button.left() + buttonPadding;
    m_symbols.draw(
        painter, {symbolLeft, button.center().y() - symbol.height() / 2}, buttonSymbol, symbolSize, Theme::primaryText);
    const qreal textLeft = symbolLeft + symbol.width() + buttonSpacing;
    const QString text = elided(m_buttonText, buttonStyle, button.right() - buttonPadding - textLeft);
    const qreal y = button.center().y() - textSize(text, buttonStyle).height() / 2;
    drawText(painter, {textLeft, y}, text, buttonStyle, Theme::primaryText);
}

void AutoHideNudge::hideEvent(QHideEvent *event)
{
    m_pressed = false;
    setHovered(false);
    QGraphicsWidget::hideEvent(event);
}

void AutoHideNudge::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    setHovered(buttonRect().contains(event->pos()));
}

void AutoHideNudge::hoverLeaveEvent(QGraphicsSceneHoverEvent *)
{
    setHovered(false);
}

void AutoHideNudge::setHovered(bool hovered)
{
    if (hovered == m_hovered)
        return;
    m_hovered = hovered;
    setCursor(hovered ? Qt::PointingHandCursor : Qt::ArrowCursor);
    update();
}

void AutoHideNudge::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    m_pressed = buttonRect().contains(event->pos());
    update();
}

void AutoHideNudge::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    const bool clicked = m_pressed && buttonRect().contains(event->pos());
    m_pressed = false;
    update();
    if (clicked)
        Q_EMIT accepted();
}

} // namespace moorline
