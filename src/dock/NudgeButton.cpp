#include "dock/NudgeButton.h"

#include "theme/Shapes.h"
#include "theme/Symbols.h"
#include "theme/Text.h"
#include "theme/Theme.h"

#include <QCursor>
#include <QPainter>
#include <cmath>

namespace moorline {

namespace {

constexpr qreal height = 20;
constexpr qreal padding = 8;
/// Between the symbol and the text.
constexpr qreal spacing = 4;
constexpr qreal symbolSize = 9;

const TextStyle textStyle{.size = 11, .weight = QFont::Medium};
const QString symbolName = QStringLiteral("arrow.up.right");

float fillOpacity(const BarItem &button)
{
    return button.isPressed() ? 0.1F : button.isHovered() ? 0.24F : 0.16F;
}

} // namespace

NudgeButton::NudgeButton(const Symbols &symbols, const QString &text, QGraphicsItem *parent)
    : BarItem(parent)
    , m_symbols(symbols)
    , m_text(text)
{
    setTouchable(true);
    setCursor(Qt::PointingHandCursor);
    setDescription({.role = QAccessible::Button, .name = m_text, .state = {}});
    for (const auto changed : {&BarItem::hoveredChanged, &BarItem::pressedChanged})
        connect(this, changed, this, [this] { update(); });
}

QSizeF NudgeButton::naturalSize() const
{
    const qreal width = padding + m_symbols.size(symbolName, symbolSize).width() + spacing
        + textSize(m_text, textStyle).width() + padding;
    return {std::ceil(width), height};
}

QPainterPath NudgeButton::shape() const
{
    return continuousRoundedRect(QRectF(QPointF(0, 0), size()), size().height() / 2);
}

void NudgeButton::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->fillPath(shape(), QColor::fromRgbF(1, 1, 1, fillOpacity(*this)));
    const auto centred = [this](const QSizeF &part) { return (size().height() - part.height()) / 2; };
    const QSizeF symbol = m_symbols.size(symbolName, symbolSize);
    m_symbols.draw(*painter, {padding, centred(symbol)}, symbolName, symbolSize, Theme::primaryText);
    const qreal left = padding + symbol.width() + spacing;
    const QString text = elided(m_text, textStyle, size().width() - padding - left);
    drawText(*painter, {left, centred(textSize(text, textStyle))}, text, textStyle, Theme::primaryText);
}

} // namespace moorline
