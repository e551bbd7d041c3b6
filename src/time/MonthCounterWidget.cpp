#include "time/MonthCounterWidget.h"

#include "settings/Choices.h"
#include "theme/Shapes.h"
#include "theme/Text.h"
#include "theme/Theme.h"
#include "time/TimeKeeper.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <QTimeZone>
#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

constexpr TextStyle percentStyle{.size = 13, .weight = QFont::DemiBold, .monospacedDigits = true};
constexpr TextStyle yearStyle{.size = 11};
constexpr qreal textGap = 6;
constexpr qreal barGap = 4;
constexpr QSizeF barSize(68, 4);
constexpr qreal narrowestFill = 2;
/// Half a point is one pixel on a screen of scale 2; finer steps of the bar would only be repainted, not seen.
constexpr qreal fillStep = 0.5;
const QColor trackColor = QColor::fromRgbF(1, 1, 1, 0.12F);

/// Where the clock that `now` was read from stands. The system's own time is not that of any QTimeZone: "TZ" may name a
/// rule, or nothing that is known.
QDateTime startOfYear(int year, const QDateTime &now)
{
    const QDate first(year, 1, 1);
    return now.timeSpec() == Qt::LocalTime ? first.startOfDay() : first.startOfDay(now.timeZone());
}

qreal fillWidth(double progress)
{
    return std::max(narrowestFill, std::floor(barSize.width() * progress / fillStep) * fillStep);
}

QSizeF naturalSize(const QString &percent, const QString &year)
{
    const QSizeF percentSize = textSize(percent, percentStyle);
    const qreal line = percentSize.width() + textGap + textSize(year, yearStyle).width();
    return {qreal(qCeil(std::max(line, barSize.width()))), qCeil(percentSize.height()) + barGap + barSize.height()};
}

qreal ascent(const TextStyle &style)
{
    return QFontMetricsF(font(style)).ascent();
}

} // namespace

double yearProgress(const QDateTime &now)
{
    if (!now.isValid())
        return 0;
    const QDateTime start = startOfYear(now.date().year(), now);
    const QDateTime end = startOfYear(now.date().year() + 1, now);
    if (!start.isValid() || !end.isValid())
        return 0;
    return std::clamp(double(start.msecsTo(now)) / double(start.msecsTo(end)), 0.0, 1.0);
}

QString percentString(double progress)
{
    return QStringLiteral("%1%").arg(int(progress * 100));
}

MonthCounterWidget::MonthCounterWidget(const TimeKeeper &keeper, QGraphicsItem *parent)
    : BarWidget(parent)
    , m_keeper(keeper)
{
    connect(&keeper, &TimeKeeper::nowChanged, this, &MonthCounterWidget::refresh);
    refresh();
}

void MonthCounterWidget::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const QSizeF percentSize = textSize(m_percent, percentStyle);
    const QPointF yearCorner(percentSize.width() + textGap, ascent(percentStyle) - ascent(yearStyle));
    drawText(*painter, {0, 0}, m_percent, percentStyle, Theme::primaryText);
    drawText(*painter, yearCorner, m_year, yearStyle, Theme::tertiaryText);

    const QPointF barCorner(0, size().height() - barSize.height());
    const qreal radius = barSize.height() / 2;
    const QRectF fill(barCorner, QSizeF(m_fillWidth, barSize.height()));
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillPath(continuousRoundedRect(QRectF(barCorner, barSize), radius), trackColor);
    painter->fillPath(continuousRoundedRect(fill, radius), Theme::yearProgress);
}

void MonthCounterWidget::measure()
{
    setNaturalSize(naturalSize(m_percent, m_year));
}

void MonthCounterWidget::refresh()
{
    const QDateTime now = m_keeper.now();
    const double progress = yearProgress(now);
    const QString percent = percentString(progress);
    const QString year = tr("of %1").arg(QLocale().toString(now.date(), QStringLiteral("yyyy")));
    const qreal fill = fillWidth(progress);
    if (percent == m_percent && year == m_year && qFuzzyCompare(fill, m_fillWidth))
        return;
    m_percent = percent;
    m_year = year;
    m_fillWidth = fill;
    measure();
    setDescription(
        {.role = QAccessible::StaticText, .name = label(WidgetKind::monthCounter), .state = m_percent + u' ' + m_year});
    update();
}

} // namespace moorline
