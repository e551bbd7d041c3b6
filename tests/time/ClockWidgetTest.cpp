#include "time/ClockWidget.h"

#include "PaintRecorder.h"
#include "RepaintCounter.h"
#include "fakes/FakeClock.h"
#include "fakes/SettingsGround.h"
#include "harness/LocaleScope.h"
#include "harness/TestCase.h"
#include "theme/Text.h"
#include "time/TimeKeeper.h"

#include <QFontMetricsF>
#include <QSignalSpy>
#include <QTimeZone>
#include <cmath>

namespace moorline::test {

namespace {

using namespace std::chrono_literals;

/// A clock on the wall at five past one in the afternoon of 4 March 2025, and all it takes to hang it there.
struct Wall {
    explicit Wall(ClockFormat format = ClockFormat::twentyFourHour, bool showSeconds = false)
    {
        set(format, showSeconds);
        keeper.start();
    }

    void set(ClockFormat format, bool showSeconds)
    {
        store.change([=](Settings &settings) {
            settings.clockFormat = format;
            settings.showSeconds = showSeconds;
        });
    }

    FakeClock clock{QDateTime(QDate(2025, 3, 4), QTime(13, 5), Qt::UTC)};
    SettingsGround ground;
    SettingsStore store{ground.context(clock)};
    TimeKeeper keeper{clock};
};

} // namespace

class ClockWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void writesTheTime_data();
    void writesTheTime();
    void writesTheSameTimeInEveryRegion();
    void writesTheDateInTheUsersLanguage_data();
    void writesTheDateInTheUsersLanguage();
    void withoutSecondsRepaintsOncePerMinute();
    void withSecondsRepaintsOncePerSecond();
    void showsANewSecondWithinHalfASecond();
    void theWidthStaysWhileSecondsPass();
    void theSizeIsAnnouncedOnlyWhenItChanges();
    void followsTheSettingsAtOnce();
    void settingsOfOthersDoNotRepaintIt();
    void followsTheTimeZone();
    void followsTheDateAtMidnight();
    void paintsTheTimeAboveTheDate();
    void itsTypeIsThatOfAClock();
};

void ClockWidgetTest::writesTheTime_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<ClockFormat>("format");
    QTest::addColumn<bool>("showSeconds");
    QTest::addColumn<QString>("text");

    const auto twelve = ClockFormat::twelveHour;
    const auto twentyFour = ClockFormat::twentyFourHour;
    const QTime afternoon(13, 5, 9);
    QTest::newRow("12 hours") << afternoon << twelve << false << QStringLiteral("1:05");
    QTest::newRow("24 hours") << afternoon << twentyFour << false << QStringLiteral("13:05");
    QTest::newRow("12 hours, seconds") << afternoon << twelve << true << QStringLiteral("1:05:09");
    QTest::newRow("24 hours, seconds") << afternoon << twentyFour << true << QStringLiteral("13:05:09");
    QTest::newRow("12 hours, midnight") << QTime(0, 0) << twelve << false << QStringLiteral("12:00");
    QTest::newRow("24 hours, midnight") << QTime(0, 0) << twentyFour << false << QStringLiteral("00:00");
    QTest::newRow("12 hours, noon") << QTime(12, 30) << twelve << false << QStringLiteral("12:30");
    QTest::newRow("24 hours, early") << QTime(9, 7) << twentyFour << false << QStringLiteral("09:07");
    QTest::newRow("12 hours, late") << QTime(23, 59, 59, 999) << twelve << true << QStringLiteral("11:59:59");
}

void ClockWidgetTest::writesTheTime()
{
    QFETCH(const QTime, time);
    QFETCH(const ClockFormat, format);
    QFETCH(const bool, showSeconds);
    QFETCH(const QString, text);

    QCOMPARE(timeString(time, format, showSeconds), text);
}

void ClockWidgetTest::writesTheSameTimeInEveryRegion()
{
    for (const char *name : {"ar_EG", "fa_IR", "hi_IN", "fi_FI", "en_US"}) {
        const LocaleScope scope(QString::fromLatin1(name));
        QCOMPARE(timeString(QTime(13, 5, 9), ClockFormat::twelveHour, true), QStringLiteral("1:05:09"));
    }
}

void ClockWidgetTest::writesTheDateInTheUsersLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");

    QTest::newRow("American") << QStringLiteral("en_US") << QStringLiteral("Tue, Mar 4");
    QTest::newRow("German") << QStringLiteral("de_DE") << QStringLiteral("Di., März 4");
    QTest::newRow("French") << QStringLiteral("fr_FR") << QStringLiteral("mar., mars 4");
    QTest::newRow("Japanese") << QStringLiteral("ja_JP") << QStringLiteral("火, 3月 4");
    QTest::newRow("Egyptian") << QStringLiteral("ar_EG") << QStringLiteral("الثلاثاء, مارس ٤");
}

void ClockWidgetTest::writesTheDateInTheUsersLanguage()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, text);

    const LocaleScope scope(locale);
    QCOMPARE(dateString(QDate(2025, 3, 4)), text);
}

void ClockWidgetTest::withoutSecondsRepaintsOncePerMinute()
{
    Wall wall;
    ClockWidget widget(wall.store, wall.keeper);
    RepaintCounter counter(widget);
    for (int minute = 0; minute < 10; ++minute) {
        int repaints = 0;
        for (int tick = 0; tick < 120; ++tick) {
            wall.clock.advance(500ms);
            repaints += counter.takeRepaints();
        }
        QCOMPARE(repaints, 1);
    }
}

void ClockWidgetTest::withSecondsRepaintsOncePerSecond()
{
    Wall wall(ClockFormat::twentyFourHour, true);
    ClockWidget widget(wall.store, wall.keeper);
    RepaintCounter counter(widget);
    int repaints = 0;
    for (int tick = 0; tick < 120; ++tick) {
        wall.clock.advance(500ms);
        repaints += counter.takeRepaints();
    }
    QCOMPARE(repaints, 60);
}

void ClockWidgetTest::showsANewSecondWithinHalfASecond()
{
    Wall wall(ClockFormat::twentyFourHour, true);
    wall.clock.setNow(wall.clock.now().addMSecs(700));
    ClockWidget widget(wall.store, wall.keeper);
    const QImage before = painted(widget);
    wall.clock.advance(500ms);
    QVERIFY(painted(widget) != before);
}

void ClockWidgetTest::theWidthStaysWhileSecondsPass()
{
    const LocaleScope scope(QStringLiteral("en_US"));
    Wall wall(ClockFormat::twentyFourHour, true);
    ClockWidget widget(wall.store, wall.keeper);
    const QSizeF size = widget.size();
    QSignalSpy announced(&widget, &BarWidget::naturalSizeChanged);
    wall.clock.advance(30min);
    QCOMPARE(widget.size(), size);
    QCOMPARE(announced.size(), 0);
}

void ClockWidgetTest::theSizeIsAnnouncedOnlyWhenItChanges()
{
    Wall wall;
    ClockWidget widget(wall.store, wall.keeper);
    QSignalSpy announced(&widget, &BarWidget::naturalSizeChanged);
    const qreal narrow = widget.size().width();
    wall.set(ClockFormat::twentyFourHour, true);
    QCOMPARE(announced.size(), 1);
    QVERIFY(widget.size().width() > narrow);
    wall.set(ClockFormat::twentyFourHour, false);
    QCOMPARE(announced.size(), 2);
    QCOMPARE(widget.size().width(), narrow);
}

void ClockWidgetTest::followsTheSettingsAtOnce()
{
    Wall wall;
    ClockWidget widget(wall.store, wall.keeper);
    RepaintCounter counter(widget);
    const QImage before = painted(widget);
    wall.set(ClockFormat::twelveHour, false);
    QCOMPARE(counter.takeRepaints(), 1);
    QVERIFY(painted(widget) != before);
}

void ClockWidgetTest::settingsOfOthersDoNotRepaintIt()
{
    Wall wall;
    ClockWidget widget(wall.store, wall.keeper);
    RepaintCounter counter(widget);
    wall.store.change([](Settings &settings) { settings.bottomGap = 20; });
    QCOMPARE(counter.takeRepaints(), 0);
}

void ClockWidgetTest::followsTheTimeZone()
{
    Wall wall;
    ClockWidget widget(wall.store, wall.keeper);
    const QImage before = painted(widget);
    wall.clock.setNow(wall.clock.now().toTimeZone(QTimeZone("Asia/Kolkata")));
    wall.clock.advance(500ms);
    QVERIFY(painted(widget) != before);
}

void ClockWidgetTest::followsTheDateAtMidnight()
{
    Wall wall;
    wall.clock.setNow(QDateTime(QDate(2025, 12, 31), QTime(23, 59, 59), Qt::UTC));
    ClockWidget widget(wall.store, wall.keeper);
    wall.clock.advance(500ms);
    RepaintCounter counter(widget);
    wall.clock.advance(500ms);
    QCOMPARE(counter.takeRepaints(), 1);
}

void ClockWidgetTest::paintsTheTimeAboveTheDate()
{
    Wall wall;
    ClockWidget widget(wall.store, wall.keeper);
    const QImage image = painted(widget, 2);
    const auto brightest = [&image](int fromRow, int toRow) {
        int alpha = 0;
        for (int y = fromRow; y < toRow; ++y) {
            for (int x = 0; x < image.width(); ++x)
                alpha = std::max(alpha, qAlpha(image.pixel(x, y)));
        }
        return alpha;
    };
    const int boundary = image.height() * 3 / 5;
    QVERIFY(brightest(0, boundary) > 240);
    QVERIFY(brightest(boundary, image.height()) > 60);
    QVERIFY(brightest(boundary, image.height()) < 140);
}

void ClockWidgetTest::itsTypeIsThatOfAClock()
{
    const LocaleScope scope(QStringLiteral("en_US"));
    Wall wall;
    ClockWidget widget(wall.store, wall.keeper);
    const PaintRecorder record(widget);
    const QList<PaintedText> time = record.textsOfSize(20);
    const QList<PaintedText> date = record.textsOfSize(11);
    QCOMPARE(record.texts.size(), time.size() + date.size());
    QCOMPARE(joined(time), QStringLiteral("13:05"));
    QVERIFY(areAll(time, 600, QColor(255, 255, 255)));
    // Every digit in a place of its own.
    QCOMPARE(time.size(), 5);
    QCOMPARE(joined(date), QStringLiteral("Tue, Mar 4"));
    QVERIFY(areAll(date, 400, QColor::fromRgbF(1, 1, 1, 0.5F)));

    const QFontMetricsF timeMetrics(font({.size = 20, .weight = QFont::DemiBold}));
    const QFontMetricsF dateMetrics(font({.size = 11}));
    QVERIFY(std::abs(time.first().origin.y() - (5 + timeMetrics.ascent())) <= 0.5);
    QVERIFY(std::abs(date.first().origin.y() - (5 + timeMetrics.height() + dateMetrics.ascent())) <= 0.5);
    QCOMPARE(widget.size().height(), 5 + std::ceil(timeMetrics.height() + dateMetrics.height()) + 5);
    const qreal dateWidth = dateMetrics.horizontalAdvance(QStringLiteral("Tue, Mar 4"));
    const qreal timeWidth =
        textSize(QStringLiteral("13:05"), {.size = 20, .weight = QFont::DemiBold, .monospacedDigits = true}).width();
    QCOMPARE(widget.size().width(), 5 + std::ceil(std::max(timeWidth, dateWidth)) + 5);
}

} // namespace moorline::test

using moorline::test::ClockWidgetTest;
MOORLINE_TEST(ClockWidgetTest);

#include "ClockWidgetTest.moc"
