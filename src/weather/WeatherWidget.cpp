#include "weather/WeatherWidget.h"

#include "theme/Symbols.h"
#include "theme/Text.h"
#include "theme/Theme.h"
#include "weather/WeatherService.h"

#include <QPainter>
#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

constexpr TextStyle temperatureStyle{.size = 20, .weight = QFont::DemiBold};
constexpr TextStyle captionStyle{.size = 11};
constexpr qreal symbolSize = 21;
constexpr qreal symbolWidth = 24;
constexpr qreal spacing = 9;
constexpr qreal padding = 5;
/// No place's name may push everything else off the screen.
constexpr qreal widestCaption = 160;

qreal textLeft(const WeatherDisplay &shown)
{
    return shown.symbol.isEmpty() ? padding : padding + symbolWidth + spacing;
}

QSizeF naturalSize(const WeatherDisplay &shown)
{
    const QSizeF temperature = textSize(shown.temperature, temperatureStyle);
    const QSizeF caption = textSize(shown.caption, captionStyle);
    const qreal width = std::max(temperature.width(), caption.width());
    return {textLeft(shown) + qCeil(width) + padding, qCeil(temperature.height() + caption.height()) + 2 * padding};
}

} // namespace

WeatherWidget::WeatherWidget(Context context, QGraphicsItem *parent)
    : WeatherTile(std::move(context), parent)
{
    refresh();
}

void WeatherWidget::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    if (!m_shown.symbol.isEmpty())
        paintSymbol(*painter);
    const QPointF temperatureCorner(textLeft(m_shown), padding);
    const QPointF captionCorner(
        temperatureCorner + QPointF(0, textSize(m_shown.temperature, temperatureStyle).height()));
    drawText(*painter, temperatureCorner, m_shown.temperature, temperatureStyle, Theme::primaryText);
    drawText(*painter, captionCorner, m_shown.caption, captionStyle, Theme::tertiaryText);
}

void WeatherWidget::paintSymbol(QPainter &painter) const
{
    const QSizeF symbol = symbols().size(m_shown.symbol, symbolSize);
    const QPointF corner(padding + (symbolWidth - symbol.width()) / 2, (size().height() - symbol.height()) / 2);
    symbols().draw(painter, corner, m_shown.symbol, symbolSize, Theme::primaryText, SymbolRendering::hierarchical);
}

void WeatherWidget::measure()
{
    // How much of the caption fits is another matter now, too.
    m_shown = {};
    refresh();
}

void WeatherWidget::refresh()
{
    WeatherDisplay display = weatherDisplay(service().snapshot(), service().lastError());
    display.caption = elided(display.caption, captionStyle, widestCaption);
    if (display == m_shown)
        return;
    m_shown = display;
    setHelpText(m_shown.helpText);
    describe(WidgetKind::weather, m_shown.temperature + QStringLiteral(", ") + m_shown.caption);
    setNaturalSize(naturalSize(m_shown));
    update();
}

} // namespace moorline
