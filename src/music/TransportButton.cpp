#include "music/TransportButton.h"

#include "theme/Symbols.h"
#include "theme/Theme.h"

#include <QPainter>

namespace moorline {

namespace {

constexpr QSizeF plainSize(18, 22);
constexpr QSizeF emphasizedSize(22, 22);
constexpr qreal unusableOpacity = 0.35;

constexpr float discOpacity = 0.14F;
constexpr float hoveredDiscOpacity = 0.22F;
constexpr float symbolOpacity = 0.8F;

} // namespace

TransportButton::TransportButton(const Symbols &symbols, qreal symbolSize, Emphasis emphasis, QGraphicsItem *parent)
    : BarItem(parent)
    , m_symbols(symbols)
    , m_symbolSize(symbolSize)
    , m_emphasis(emphasis)
{
    resize(sizeFor(emphasis));
    setUsable(false);
    setRepeatable(true);
    connect(this, &BarItem::hoveredChanged, this, [this] { update(); });
}

QSizeF TransportButton::sizeFor(Emphasis emphasis)
{
    switch (emphasis) {
    case Emphasis::plain:
        return plainSize;
    case Emphasis::emphasized:
        return emphasizedSize;
    }
    Q_UNREACHABLE();
}

void TransportButton::show(const QString &symbol, const QString &name)
{
    setDescription({.role = QAccessible::Button, .name = name, .state = {}});
    if (symbol == m_symbol)
        return;
    m_symbol = symbol;
    update();
}

void TransportButton::setUsable(bool usable)
{
    if (usable != isTouchable())
        setTouchable(usable);
    setOpacity(usable ? 1 : unusableOpacity);
}

void TransportButton::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    if (m_emphasis == Emphasis::emphasized) {
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(QColor::fromRgbF(1, 1, 1, isHovered() ? hoveredDiscOpacity : discOpacity));
        painter->drawEllipse(rect());
    }
    QColor color = Theme::primaryText;
    color.setAlphaF(isHovered() ? color.alphaF() : color.alphaF() * symbolOpacity);
    const QSizeF symbol = m_symbols.size(m_symbol, m_symbolSize, SymbolWeight::semibold);
    const QPointF corner((size().width() - symbol.width()) / 2, (size().height() - symbol.height()) / 2);
    m_symbols.draw(
        *painter, corner, m_symbol, m_symbolSize, color, SymbolRendering::monochrome, SymbolWeight::semibold);
}

} // namespace moorline
