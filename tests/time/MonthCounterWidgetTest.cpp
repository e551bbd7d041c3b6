#include "time/MonthCounterWidget.h"

#include "PaintRecorder.h"
#include "RepaintCounter.h"
#include "TimeZoneScope.h"
#include "fakes/FakeClock.h"
#include "harness/LocaleScope.h"
#include "harness/TestCase.h"
#include "theme/Text.h"
#include "theme/Theme.h"
#include "time/TimeKeeper.h"

#include <QFontMetricsF>
#include <QTimeZone>
#include <cmath>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

QDateTime utc(int year, int month, int day, const QTime &time = QTime(0, 0))
{
    return {QDate(year, month, day), time, Qt::UTC};
}

/// The length of the bar's filled part, in points, as painted.
qreal paintedFill(const QDateTime &now)
{
    constexpr int scale = 2;
    FakeClock clock(now);
    TimeKeeper keeper(clock);
    MonthCounterWidget widget(keeper);
    const QImage image = painted(widget, scale);
    const int middleOfTheBar = image.height() - 2 * scale;
    int filled = 0;
    while (filled < image.width() && image.pixelColor(filled, middleOfTheBar).alpha() > 128)
        ++filled;
    return qreal(filled) / scale;
}

} // namespace

class MonthCounterWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void progressIsTheFractionOfTheYear_data();
    void progressIsTheFractionOfTheYear();
    void summerTimeCountsTheHoursThatReallyPassed();
    void theYearIsThatOfItsOwnTimeZone();
    void theSystemsOwnTimeIsTakenAsItIs_data();
    void theSystemsOwnTimeIsTakenAsItIs();
    void anInvalidTimeHasNoProgress();
    void thePercentageIsCutOff_data();
    void thePercentageIsCutOff();
    void aFreshYearShowsASliver();
    void theFillGrowsWithTheYear();
    void repaintsOnlyForAVisibleStep();
    void theYearIsWrittenWithTheUsersDigits();
    void isAtLeastAsWideAsItsBar();
    void itsTypeAndItsBarAreThoseOfACounter();
};

void MonthCounterWidgetTest::progressIsTheFractionOfTheYear_data()
{
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<double>("progress");

    const QTime lastMoment(23, 59, 59, 999);
    QTest::newRow("the first moment") << utc(2025, 1, 1) << 0.0;
    QTest::newRow("after one day") << utc(2025, 1, 2) << 1 / 365.0;
    QTest::newRow("the middle of a common year") << utc(2025, 7, 2, QTime(12, 0)) << 0.5;
    QTest::newRow("the middle of a leap year") << utc(2024, 7, 2) << 0.5;
    QTest::newRow("a leap year's March") << utc(2024, 3, 1) << 60 / 366.0;
    QTest::newRow("a common year's March") << utc(2025, 3, 1) << 59 / 365.0;
    QTest::newRow("a century's March") << utc(1900, 3, 1) << 59 / 365.0;
    QTest::newRow("the last moment") << utc(2025, 12, 31, lastMoment) << 1 - 1 / (365.0 * 86400000);
}

void MonthCounterWidgetTest::progressIsTheFractionOfTheYear()
{
    QFETCH(const QDateTime, now);
    QFETCH(const double, progress);

    QVERIFY(std::abs(yearProgress(now) - progress) < 1e-12);
    QVERIFY(yearProgress(now) < 1);
}

void MonthCounterWidgetTest::summerTimeCountsTheHoursThatReallyPassed()
{
    const QTimeZone newYork("America/New_York");
    const double july = yearProgress(QDate(2025, 7, 1).startOfDay(newYork));
    QVERIFY(std::abs(july - (181 * 24 - 1) / (365 * 24.0)) < 1e-12);
    const double december = yearProgress(QDate(2025, 12, 1).startOfDay(newYork));
    QVERIFY(std::abs(december - 334 / 365.0) < 1e-12);
}

void MonthCounterWidgetTest::theYearIsThatOfItsOwnTimeZone()
{
    const QDateTime newYearInTokyo(QDate(2026, 1, 1), QTime(0, 0), QTimeZone("Asia/Tokyo"));
    QCOMPARE(yearProgress(newYearInTokyo), 0.0);
    QVERIFY(yearProgress(newYearInTokyo.toUTC()) > 0.99);
    QCOMPARE(yearProgress(QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::OffsetFromUTC, 19800)), 0.0);
}

void MonthCounterWidgetTest::theSystemsOwnTimeIsTakenAsItIs_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<double>("hoursOfJuly");

    const double half = (365 / 2.0 - 181) * 24;
    QTest::newRow("a place") << QByteArray("Asia/Tokyo") << half;
    QTest::newRow("a place with summer time") << QByteArray("Europe/Berlin") << half + 1;
    QTest::newRow("a rule, three hours ahead") << QByteArray("UTC-3") << half;
    QTest::newRow("a rule, five hours behind") << QByteArray("XYZ5") << half;
    QTest::newRow("a rule with summer time") << QByteArray("CET-1CEST,M3.5.0,M10.5.0/3") << half + 1;
    QTest::newRow("unknown") << QByteArray("Mars/Olympus") << half;
    QTest::newRow("empty") << QByteArray("") << half;
}

void MonthCounterWidgetTest::theSystemsOwnTimeIsTakenAsItIs()
{
    QFETCH(const QByteArray, zone);
    QFETCH(const double, hoursOfJuly);

    const TimeZoneScope scope(zone);
    const auto midnight = [](int year, int month, int day) { return QDateTime(QDate(year, month, day), QTime(0, 0)); };
    QCOMPARE(yearProgress(midnight(2025, 1, 1)), 0.0);
    QVERIFY(std::abs(yearProgress(midnight(2026, 1, 1).addMSecs(-1)) - 1) < 1e-9);
    // The first moment of July and so many hours are the middle of the year.
    const QDateTime middle = midnight(2025, 7, 1).addMSecs(qint64(hoursOfJuly * 3'600'000));
    QVERIFY(std::abs(yearProgress(middle) - 0.5) < 1e-12);
}

void MonthCounterWidgetTest::anInvalidTimeHasNoProgress()
{
    QCOMPARE(yearProgress(QDateTime()), 0.0);
}

void MonthCounterWidgetTest::thePercentageIsCutOff_data()
{
    QTest::addColumn<double>("progress");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing") << 0.0 << QStringLiteral("0%");
    QTest::newRow("almost one") << 0.00999 << QStringLiteral("0%");
    QTest::newRow("half") << 0.5 << QStringLiteral("50%");
    QTest::newRow("more than half a percent") << 0.179 << QStringLiteral("17%");
    QTest::newRow("just before midnight on 31 December")
        << yearProgress(utc(2025, 12, 31, QTime(23, 59, 59))) << QStringLiteral("99%");
    QTest::newRow("the first of January") << yearProgress(utc(2025, 1, 1)) << QStringLiteral("0%");
}

void MonthCounterWidgetTest::thePercentageIsCutOff()
{
    QFETCH(const double, progress);
    QFETCH(const QString, text);

    QCOMPARE(percentString(progress), text);
}

void MonthCounterWidgetTest::aFreshYearShowsASliver()
{
    QCOMPARE(paintedFill(utc(2025, 1, 1)), 2.0);
    QCOMPARE(paintedFill(utc(2025, 1, 5)), 2.0);
}

void MonthCounterWidgetTest::theFillGrowsWithTheYear()
{
    QVERIFY(std::abs(paintedFill(utc(2025, 7, 2, QTime(12, 0))) - 34) <= 1);
    QVERIFY(std::abs(paintedFill(utc(2025, 12, 31, QTime(23, 59))) - 68) <= 1);
}

void MonthCounterWidgetTest::repaintsOnlyForAVisibleStep()
{
    FakeClock clock(utc(2025, 3, 4));
    TimeKeeper keeper(clock);
    keeper.start();
    MonthCounterWidget widget(keeper);
    RepaintCounter counter(widget);
    int repaints = 0;
    for (int hour = 0; hour < 24 * 30; ++hour) {
        clock.setNow(clock.now().addSecs(3599));
        clock.advance(1s);
        repaints += counter.takeRepaints();
    }
    // Thirty days are 8.2 percent of the year and 5.6 points of the bar: 8 or 9 percentages and 11 or 12 steps.
    QVERIFY(repaints >= 16);
    QVERIFY(repaints <= 21);
}

void MonthCounterWidgetTest::theYearIsWrittenWithTheUsersDigits()
{
    FakeClock clock(utc(2025, 3, 4));
    TimeKeeper keeper(clock);
    const LocaleScope american(QStringLiteral("en_US"));
    MonthCounterWidget western(keeper);
    const LocaleScope egyptian(QStringLiteral("ar_EG"));
    MonthCounterWidget eastern(keeper);
    QVERIFY(painted(western) != painted(eastern));
}

void MonthCounterWidgetTest::isAtLeastAsWideAsItsBar()
{
    FakeClock clock(utc(2025, 1, 1));
    TimeKeeper keeper(clock);
    MonthCounterWidget widget(keeper);
    QVERIFY(widget.size().width() >= 68);
    QVERIFY(widget.size().width() < 100);
}

void MonthCounterWidgetTest::itsTypeAndItsBarAreThoseOfACounter()
{
    const LocaleScope scope(QStringLiteral("en_US"));
    FakeClock clock(utc(2025, 7, 2, QTime(12, 0)));
    TimeKeeper keeper(clock);
    MonthCounterWidget widget(keeper);
    const PaintRecorder record(widget);
    const QList<PaintedText> percent = record.textsOfSize(13);
    const QList<PaintedText> year = record.textsOfSize(11);
    QCOMPARE(record.texts.size(), percent.size() + year.size());
    QCOMPARE(joined(percent), QStringLiteral("50%"));
    QVERIFY(areAll(percent, 600, QColor(255, 255, 255)));
    // Every digit in a place of its own.
    QCOMPARE(percent.size(), 3);
    QCOMPARE(joined(year), QStringLiteral("of 2025"));
    QVERIFY(areAll(year, 400, QColor::fromRgbF(1, 1, 1, 0.4F)));

    const TextStyle percentStyle{.size = 13, .weight = QFont::DemiBold, .monospacedDigits = true};
    const QSizeF percentSize = textSize(QStringLiteral("50%"), percentStyle);
    QVERIFY(std::abs(year.first().origin.x() - (percentSize.width() + 6)) <= 0.5);
    QVERIFY(std::abs(year.first().origin.y() - percent.first().origin.y()) <= 1);
    const qreal barTop = std::ceil(percentSize.height()) + 4;
    QCOMPARE(widget.size().height(), barTop + 4);
    QCOMPARE(record.shapes.size(), 2);
    QCOMPARE(record.shapes[0].bounds, QRectF(0, barTop, 68, 4));
    QCOMPARE(record.shapes[0].color.rgba(), QColor::fromRgbF(1, 1, 1, 0.12F).rgba());
    QCOMPARE(record.shapes[1].bounds, QRectF(0, barTop, 34, 4));
    QCOMPARE(record.shapes[1].color.name(), QStringLiteral("#ff8a4c"));
}

} // namespace moorline::test

using moorline::test::MonthCounterWidgetTest;
MOORLINE_TEST(MonthCounterWidgetTest);

#include "MonthCounterWidgetTest.moc"
