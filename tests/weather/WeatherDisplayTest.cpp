#include "weather/WeatherDisplay.h"

#include "harness/TestCase.h"

#include <QLocale>
#include <QTimeZone>

using namespace moorline;
using namespace moorline::test;

namespace {

WeatherSnapshot clearNightIn(const QString &place)
{
    WeatherSnapshot snapshot;
    snapshot.place.name = place;
    snapshot.temperature = 21.5;
    snapshot.apparentTemperature = -2.5;
    snapshot.weatherCode = 0;
    snapshot.isDay = false;
    return snapshot;
}

WeatherSnapshot clearNight()
{
    return clearNightIn(QStringLiteral("Munich"));
}

/// So many days from Monday, 3 March 2025, one degree warmer each, in Auckland.
WeatherSnapshot withDays(int count)
{
    WeatherSnapshot snapshot;
    for (int i = 0; i < count; ++i) {
        const QDateTime date = QDate(2025, 3, 3 + i).startOfDay(QTimeZone(QByteArray("Pacific/Auckland")));
        snapshot.daily.append({date, 0, 10.0 + i, -0.4 - i});
    }
    return snapshot;
}

} // namespace

class WeatherDisplayTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void temperaturesAreRoundedAwayFromZero_data()
    {
        QTest::addColumn<double>("temperature");
        QTest::addColumn<QString>("text");
        const auto row = [](double temperature, const char *text) {
            QTest::addRow("%g", temperature) << temperature << QString::fromUtf8(text);
        };
        row(21.5, "22°");
        row(21.4999, "21°");
        row(-2.5, "-3°");
        row(-2.4, "-2°");
        row(-0.4, "0°");
        row(-0.0, "0°");
        row(-0.5, "-1°");
        row(0.5, "1°");
        row(0.49999999999999994, "0°");
        row(100, "100°");
        row(-9999.5, "-10000°");
    }
    void temperaturesAreRoundedAwayFromZero()
    {
        QFETCH(const double, temperature);
        QTEST(degrees(temperature), "text");
    }

    void beforeTheFirstAnswerItIsLoading()
    {
        const WeatherDisplay expected{
            QString(), QStringLiteral("—°"), QStringLiteral("Loading"), QStringLiteral("Weather")};
        QCOMPARE(weatherDisplay(std::nullopt, std::nullopt), expected);
    }

    void afterAFirstFailureItIsUnavailable()
    {
        const WeatherDisplay expected{
            QString(), QStringLiteral("—°"), QStringLiteral("Unavailable"), QStringLiteral("Weather")};
        QCOMPARE(weatherDisplay(std::nullopt, QStringLiteral("offline")), expected);
    }

    void theWeatherIsShownWithItsPlace()
    {
        const WeatherDisplay expected{QStringLiteral("moon.stars.fill"), QStringLiteral("22°"),
            QStringLiteral("Munich"), QStringLiteral("Clear\nFeels like -3°")};
        QCOMPARE(weatherDisplay(clearNight(), std::nullopt), expected);
    }

    void aLaterFailureChangesNothing()
    {
        QCOMPARE(weatherDisplay(clearNight(), QStringLiteral("offline")), weatherDisplay(clearNight(), std::nullopt));
    }

    void aPlaceWithoutANameHasADash()
    {
        for (const char *name : {"", " ", "\n", "\x1b"})
            QCOMPARE(
                weatherDisplay(clearNightIn(QString::fromLatin1(name)), std::nullopt).caption, QStringLiteral("—"));
    }

    void aNameIsOneLine()
    {
        const WeatherSnapshot snapshot = clearNightIn(QStringLiteral(" Bad\nName\t\u2028\u001b\u0007here "));
        QCOMPARE(weatherDisplay(snapshot, std::nullopt).caption, QStringLiteral("Bad Name here"));
    }

    void threeDaysAreShownAtMost_data()
    {
        QTest::addColumn<int>("days");
        QTest::addColumn<int>("columns");
        for (const int days : {0, 1, 2, 3, 4, 5, 16})
            QTest::addRow("%d", days) << days << std::min(days, 3);
    }
    void threeDaysAreShownAtMost()
    {
        QFETCH(const int, days);
        QFETCH(const int, columns);
        QCOMPARE(upcoming(withDays(days)).size(), columns);
    }

    void withoutWeatherThereAreNoDays() { QVERIFY(upcoming(std::nullopt).isEmpty()); }

    void daysAreNamedAsInTheirPlace()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        const QString sun = QStringLiteral("sun.max.fill");
        const QList<ForecastColumn> expected{{QStringLiteral("MON"), sun, QStringLiteral("10°"), QStringLiteral("0°")},
            {QStringLiteral("TUE"), sun, QStringLiteral("11°"), QStringLiteral("-1°")},
            {QStringLiteral("WED"), sun, QStringLiteral("12°"), QStringLiteral("-2°")}};
        QCOMPARE(upcoming(withDays(4)), expected);
    }

    void daysAreShownByDay()
    {
        WeatherSnapshot night = withDays(1);
        night.isDay = false;
        QCOMPARE(upcoming(night).first().symbol, QStringLiteral("sun.max.fill"));
        QCOMPARE(weatherDisplay(night, std::nullopt).symbol, QStringLiteral("moon.stars.fill"));
    }
};

MOORLINE_TEST(WeatherDisplayTest);

#include "WeatherDisplayTest.moc"
