#include "time/CalendarWidget.h"

#include "PaintRecorder.h"
#include "RepaintCounter.h"
#include "fakes/FakeClock.h"
#include "harness/LocaleScope.h"
#include "harness/TestCase.h"
#include "theme/Text.h"
#include "theme/Theme.h"
#include "time/TimeKeeper.h"

#include <QFontMetricsF>
#include <cmath>

namespace moorline::test {

using namespace std::chrono_literals;

class CalendarWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void repaintsOnlyWhenTheDayChanges();
    void isNotWiderThanItsWords();
    void paintsTheWeekdayInItsOwnColorAboveTheDay();
    void itsTypeIsThatOfACalendarPage();
};

void CalendarWidgetTest::repaintsOnlyWhenTheDayChanges()
{
    FakeClock clock(QDateTime(QDate(2024, 2, 28), QTime(23, 58), Qt::UTC));
    TimeKeeper keeper(clock);
    keeper.start();
    CalendarWidget widget(keeper);
    RepaintCounter counter(widget);
    clock.advance(119s);
    QCOMPARE(counter.takeRepaints(), 0);
    const QImage before = painted(widget);
    clock.advance(1s);
    QCOMPARE(counter.takeRepaints(), 1);
    QVERIFY(painted(widget) != before);
    clock.advance(23h);
    QCOMPARE(counter.takeRepaints(), 0);
}

void CalendarWidgetTest::isNotWiderThanItsWords()
{
    const LocaleScope scope(QStringLiteral("en_US"));
    FakeClock clock;
    TimeKeeper keeper(clock);
    CalendarWidget widget(keeper);
    const QImage image = painted(widget);
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                ink |= QRect(x, y, 1, 1);
        }
    }
    QVERIFY(ink.left() <= 2);
    QVERIFY(ink.right() >= image.width() - 3);
}

void CalendarWidgetTest::paintsTheWeekdayInItsOwnColorAboveTheDay()
{
    const LocaleScope scope(QStringLiteral("en_US"));
    FakeClock clock;
    TimeKeeper keeper(clock);
    CalendarWidget widget(keeper);
    const QImage image = painted(widget, 2);
    const auto rowsOf = [&image](const QColor &color) {
        QList<int> rows;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == color)
                    rows.append(y);
            }
        }
        return rows;
    };
    const QList<int> weekday = rowsOf(QColor(Theme::calendarWeekday.rgb()));
    const QList<int> day = rowsOf(Theme::primaryText.rgb());
    QVERIFY(!weekday.isEmpty());
    QVERIFY(!day.isEmpty());
    QVERIFY(weekday.last() < day.first());
}

void CalendarWidgetTest::itsTypeIsThatOfACalendarPage()
{
    const LocaleScope scope(QStringLiteral("en_US"));
    FakeClock clock;
    TimeKeeper keeper(clock);
    CalendarWidget widget(keeper);
    const PaintRecorder record(widget);
    QCOMPARE(record.texts.size(), 2);
    const PaintedText &weekday = record.texts[0];
    QCOMPARE(weekday.text, QStringLiteral("TUE"));
    QCOMPARE(weekday.pixelSize, 10);
    QCOMPARE(weekday.weight, 700);
    // Fonts keep it in steps of a sixty-fourth.
    QVERIFY(std::abs(weekday.tracking - 0.8) < 1 / 64.0);
    QCOMPARE(weekday.color.name(), QStringLiteral("#ff6b5e"));
    const PaintedText &day = record.texts[1];
    QCOMPARE(day.text, QStringLiteral("4"));
    QCOMPARE(day.pixelSize, 22);
    QCOMPARE(day.weight, 600);
    QCOMPARE(day.tracking, 0.0);
    QCOMPARE(day.color, QColor(255, 255, 255));

    const QFontMetricsF weekdayMetrics(font({.size = 10, .weight = QFont::Bold, .tracking = 0.8}));
    const QFontMetricsF dayMetrics(font({.size = 22, .weight = QFont::DemiBold}));
    QVERIFY(std::abs(weekday.origin.y() - weekdayMetrics.ascent()) <= 0.5);
    QVERIFY(std::abs(day.origin.y() - (weekdayMetrics.height() + dayMetrics.ascent())) <= 0.5);
    QCOMPARE(widget.size().height(), std::ceil(weekdayMetrics.height() + dayMetrics.height()));
    const qreal dayWidth = dayMetrics.horizontalAdvance(u'4');
    QVERIFY(std::abs(day.origin.x() - (widget.size().width() - dayWidth) / 2) <= 0.5);
}

} // namespace moorline::test

using moorline::test::CalendarWidgetTest;
MOORLINE_TEST(CalendarWidgetTest);

#include "CalendarWidgetTest.moc"
