#include "time/ClockWidget.h"

#include "settings/Choices.h"
#include "settings/SettingsStore.h"
#include "theme/Text.h"
#include "theme/Theme.h"
#include "time/TimeKeeper.h"

#include <QLocale>
#include <QPainter>
#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

constexpr TextStyle timeStyle{.size = 20, .weight = QFont::DemiBold, .monospacedDigits = true};
constexpr TextStyle dateStyle{.size = 11};
constexpr qreal padding = 5;

int shownHour(int hour, ClockFormat format)
{
    switch (format) {
    case ClockFormat::twelveHour:
        return (hour + 11) % 12 + 1;
    case ClockFormat::twentyFourHour:
        return hour;
    }
    return hour;
}

QString twoDigits(int number)
{
    return QString::number(number).rightJustified(2, u'0');
}

QSizeF naturalSize(const QString &time, const QString &date)
{
    const QSizeF timeSize = textSize(time, timeStyle);
    const QSizeF dateSize = textSize(date, dateStyle);
    const qreal width = std::max(timeSize.width(), dateSize.width());
    return {qCeil(width) + 2 * padding, qCeil(timeSize.height() + dateSize.height()) + 2 * padding};
}

} // namespace

QString timeString(const QTime &time, ClockFormat format, bool showSeconds)
{
    const int hour = shownHour(time.hour(), format);
    const QString hours = format == ClockFormat::twelveHour ? QString::number(hour) : twoDigits(hour);
    const QString hoursAndMinutes = hours + u':' + twoDigits(time.minute());
    return showSeconds ? hoursAndMinutes + u':' + twoDigits(time.second()) : hoursAndMinutes;
}

QString dateString(const QDate &date)
{
    return QLocale().toString(date, QStringLiteral("ddd, MMM d"));
}

ClockWidget::ClockWidget(const SettingsStore &store, const TimeKeeper &keeper, QGraphicsItem *parent)
    : BarWidget(parent)
    , m_store(store)
    , m_keeper(keeper)
{
    connect(&keeper, &TimeKeeper::nowChanged, this, &ClockWidget::refresh);
    connect(&store, &SettingsStore::settingsDidChange, this, &ClockWidget::refresh);
    refresh();
}

void ClockWidget::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const QSizeF timeSize = textSize(m_time, timeStyle);
    const QSizeF dateSize = textSize(m_date, dateStyle);
    const auto centred = [this](const QSizeF &text) { return (size().width() - text.width()) / 2; };
    drawText(*painter, {centred(timeSize), padding}, m_time, timeStyle, Theme::primaryText);
    drawText(*painter, {centred(dateSize), padding + timeSize.height()}, m_date, dateStyle, Theme::secondaryText);
}

void ClockWidget::measure()
{
    setNaturalSize(naturalSize(m_time, m_date));
}

void ClockWidget::refresh()
{
    const QDateTime now = m_keeper.now();
    const Settings &settings = m_store.settings();
    const QString time = timeString(now.time(), settings.clockFormat, settings.showSeconds);
    const QString date = dateString(now.date());
    if (time == m_time && date == m_date)
        return;
    m_time = time;
    m_date = date;
    measure();
    setDescription({.role = QAccessible::StaticText,
        .name = label(WidgetKind::clock),
        .state = m_time + QStringLiteral(", ") + m_date});
    update();
}

} // namespace moorline
