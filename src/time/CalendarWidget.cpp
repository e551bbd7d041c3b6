#include "time/CalendarWidget.h"

#include "settings/Choices.h"
#include "support/WeekdayText.h"
#include "theme/Text.h"
#include "theme/Theme.h"
#include "time/TimeKeeper.h"

#include <QLocale>
#include <QPainter>
#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

constexpr TextStyle weekdayStyle{.size = 10, .weight = QFont::Bold, .tracking = 0.8};
constexpr TextStyle dayStyle{.size = 22, .weight = QFont::DemiBold};

/// Without the space that follows the last letter, which would push the word off the middle.
qreal inkWidth(const QString &weekday)
{
    return std::max(0.0, textSize(weekday, weekdayStyle).width() - weekdayStyle.tracking);
}

QSizeF naturalSize(const QString &weekday, const QString &day)
{
    const QSizeF daySize = textSize(day, dayStyle);
    const qreal height = textSize(weekday, weekdayStyle).height() + daySize.height();
    return QSizeF(qCeil(std::max(inkWidth(weekday), daySize.width())), qCeil(height));
}

} // namespace

CalendarWidget::CalendarWidget(const TimeKeeper &keeper, QGraphicsItem *parent)
    : BarWidget(parent)
    , m_keeper(keeper)
{
    connect(&keeper, &TimeKeeper::nowChanged, this, &CalendarWidget::refresh);
    refresh();
}

void CalendarWidget::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const qreal width = size().width();
    const QSizeF weekdaySize = textSize(m_weekday, weekdayStyle);
    const QPointF weekdayCorner((width - inkWidth(m_weekday)) / 2, 0);
    const QPointF dayCorner((width - textSize(m_day, dayStyle).width()) / 2, weekdaySize.height());
    drawText(*painter, weekdayCorner, m_weekday, weekdayStyle, Theme::calendarWeekday);
    drawText(*painter, dayCorner, m_day, dayStyle, Theme::primaryText);
}

void CalendarWidget::measure()
{
    setNaturalSize(naturalSize(m_weekday, m_day));
}

void CalendarWidget::refresh()
{
    const QDate today = m_keeper.now().date();
    const QString weekday = weekdayString(today);
    const QString day = QLocale().toString(today, QStringLiteral("d"));
    if (weekday == m_weekday && day == m_day)
        return;
    m_weekday = weekday;
    m_day = day;
    measure();
    setDescription(
        {.role = QAccessible::StaticText, .name = label(WidgetKind::calendar), .state = m_weekday + u' ' + m_day});
    update();
}

} // namespace moorline
