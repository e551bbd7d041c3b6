#include "weather/ForecastWidget.h"

#include "theme/Symbols.h"
#include "theme/Text.h"
#include "theme/Theme.h"
#include "weather/WeatherService.h"

#include <QPainter>
#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

constexpr TextStyle weekdayStyle{.size = 10, .weight = QFont::Medium, .tracking = 0.5};
constexpr TextStyle temperatureStyle{.size = 11, .weight = QFont::Medium};
constexpr qreal symbolSize = 13;
constexpr qreal columnGap = 16;
constexpr qreal lineGap = 3;
constexpr qreal temperatureGap = 4;

/// Without the space that follows the last letter, which would push the word off the middle.
qreal weekdayWidth(const ForecastColumn &column)
{
    return std::max(0.0, textSize(column.weekday, weekdayStyle).width() - weekdayStyle.tracking);
}

qreal temperaturesWidth(const ForecastColumn &column)
{
    return textSize(column.maximum, temperatureStyle).width() + temperatureGap
        + textSize(column.minimum, temperatureStyle).width();
}

qreal columnWidth(const ForecastColumn &column)
{
    return qCeil(std::max(weekdayWidth(column), temperaturesWidth(column)));
}

/// The same for every symbol of one size.
qreal symbolHeight(const Symbols &symbols, const ForecastColumn &column)
{
    return symbols.size(column.symbol, symbolSize).height();
}

QSizeF naturalSize(const QList<ForecastColumn> &columns, const Symbols &symbols)
{
    if (columns.isEmpty())
        return {0, 0};
    qreal width = qreal(columns.size() - 1) * columnGap;
    for (const ForecastColumn &column : columns)
        width += columnWidth(column);
    const qreal lines = textSize({}, weekdayStyle).height() + symbolHeight(symbols, columns.first())
        + textSize({}, temperatureStyle).height();
    return {width, qreal(qCeil(lines + 2 * lineGap))};
}

/// "MON 5° 1°, TUE 6° 2°"
QString inWords(const QList<ForecastColumn> &columns)
{
    QStringList days;
    for (const ForecastColumn &column : columns)
        days.append(column.weekday + u' ' + column.maximum + u' ' + column.minimum);
    return days.join(QStringLiteral(", "));
}

} // namespace

ForecastWidget::ForecastWidget(Context context, QGraphicsItem *parent)
    : WeatherTile(std::move(context), parent)
{
    destinationChanged();
    refresh();
}

void ForecastWidget::destinationChanged()
{
    setHelpText(tr("Open %1").arg(destination()));
}

void ForecastWidget::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    qreal left = 0;
    for (const ForecastColumn &column : m_columns) {
        paintColumn(*painter, column, left);
        left += columnWidth(column) + columnGap;
    }
}

void ForecastWidget::paintColumn(QPainter &painter, const ForecastColumn &column, qreal left) const
{
    const auto centred = [middle = left + columnWidth(column) / 2](qreal width) { return middle - width / 2; };
    drawText(painter, {centred(weekdayWidth(column)), 0}, column.weekday, weekdayStyle, Theme::tertiaryText);

    const qreal symbolTop = textSize({}, weekdayStyle).height() + lineGap;
    symbols().draw(painter, {centred(symbols().size(column.symbol, symbolSize).width()), symbolTop}, column.symbol,
        symbolSize, Theme::primaryText, SymbolRendering::hierarchical);

    const QPointF maximumCorner(
        centred(temperaturesWidth(column)), symbolTop + symbolHeight(symbols(), column) + lineGap);
    const qreal maximumWidth = textSize(column.maximum, temperatureStyle).width();
    drawText(painter, maximumCorner, column.maximum, temperatureStyle, Theme::primaryText);
    drawText(painter, maximumCorner + QPointF(maximumWidth + temperatureGap, 0), column.minimum, temperatureStyle,
        Theme::tertiaryText);
}

void ForecastWidget::measure()
{
    setNaturalSize(naturalSize(m_columns, symbols()));
}

void ForecastWidget::refresh()
{
    const QList<ForecastColumn> columns = upcoming(service().snapshot());
    if (columns == m_columns)
        return;
    m_columns = columns;
    describe(WidgetKind::forecast, inWords(m_columns));
    measure();
    update();
}

} // namespace moorline
