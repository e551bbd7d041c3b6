#include "weather/WeatherIcon.h"

#include "harness/TestCase.h"

#include <limits>

using namespace moorline;
using namespace moorline::test;

class WeatherIconTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyCodeHasItsTextAndSymbols_data()
    {
        QTest::addColumn<qint64>("code");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("day");
        QTest::addColumn<QString>("night");
        const auto row = [](qint64 code, const char *description, const char *day, const char *night = nullptr) {
            QTest::addRow("%lld", code) << code << QString::fromUtf8(description) << QString::fromUtf8(day)
                                        << QString::fromUtf8(night ? night : day);
        };
        row(0, "Clear", "sun.max.fill", "moon.stars.fill");
        row(1, "Mainly clear", "cloud.sun.fill", "cloud.moon.fill");
        row(2, "Partly cloudy", "cloud.sun.fill", "cloud.moon.fill");
        row(3, "Overcast", "cloud.fill");
        for (const qint64 code : {45, 48})
            row(code, "Fog", "cloud.fog.fill");
        for (const qint64 code : {51, 53, 55})
            row(code, "Drizzle", "cloud.drizzle.fill");
        for (const qint64 code : {56, 57})
            row(code, "Freezing drizzle", "cloud.sleet.fill");
        for (const qint64 code : {61, 63, 65})
            row(code, "Rain", "cloud.rain.fill");
        for (const qint64 code : {66, 67})
            row(code, "Freezing rain", "cloud.sleet.fill");
        for (const qint64 code : {71, 73, 75, 77})
            row(code, "Snow", "cloud.snow.fill");
        for (const qint64 code : {80, 81, 82})
            row(code, "Rain showers", "cloud.heavyrain.fill");
        for (const qint64 code : {85, 86})
            row(code, "Snow showers", "cloud.snow.fill");
        row(95, "Thunderstorm", "cloud.bolt.fill");
        for (const qint64 code : {96, 99})
            row(code, "Thunderstorm", "cloud.bolt.rain.fill");
    }
    void everyCodeHasItsTextAndSymbols()
    {
        QFETCH(const qint64, code);
        QTEST(WeatherIcon::description(code), "description");
        QTEST(WeatherIcon::symbol(code, true), "day");
        QTEST(WeatherIcon::symbol(code, false), "night");
    }

    void anyOtherCodeIsADashAndACloud()
    {
        const QSet<qint64> known{
            0, 1, 2, 3, 45, 48, 51, 53, 55, 56, 57, 61, 63, 65, 66, 67, 71, 73, 75, 77, 80, 81, 82, 85, 86, 95, 96, 99};
        QList<qint64> others{std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()};
        for (qint64 code = -3; code <= 300; ++code)
            others.append(code);
        for (const qint64 code : std::as_const(others)) {
            if (known.contains(code))
                continue;
            QCOMPARE(WeatherIcon::description(code), QStringLiteral("—"));
            QCOMPARE(WeatherIcon::symbol(code, true), QStringLiteral("cloud.fill"));
            QCOMPARE(WeatherIcon::symbol(code, false), QStringLiteral("cloud.fill"));
        }
    }
};

MOORLINE_TEST(WeatherIconTest);

#include "WeatherIconTest.moc"
