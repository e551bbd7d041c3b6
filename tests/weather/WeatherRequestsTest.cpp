#include "WeatherFixture.h"
#include "harness/TestCase.h"

#include <QUrlQuery>

using namespace moorline;
using namespace moorline::test;

namespace {

using Items = QList<std::pair<QString, QString>>;

Items decodedItems(const QUrl &url)
{
    return QUrlQuery(url).queryItems(QUrl::FullyDecoded);
}

std::pair<QString, QString> item(const char *key, const char *value)
{
    return {QString::fromUtf8(key), QString::fromUtf8(value)};
}

/// The address of the forecast for a chosen place.
QUrl forecastUrl(double latitude, double longitude, TemperatureUnit unit)
{
    WeatherFixture fixture;
    fixture.change([&](Settings &settings) {
        settings.useCurrentLocation = false;
        settings.location.latitude = latitude;
        settings.location.longitude = longitude;
        settings.temperatureUnit = unit;
    });
    fixture.service->start();
    return fixture.client.requested.value(0);
}

QCoro::Task<> search(WeatherService &service, QString query, std::optional<QList<WeatherLocation>> &found)
{
    found = co_await service.searchCities(query);
}

} // namespace

class WeatherRequestsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theForecastIsAskedForInOneOrder()
    {
        const QUrl url = forecastUrl(37.7749, -122.4194, TemperatureUnit::fahrenheit);
        QCOMPARE(url.adjusted(QUrl::RemoveQuery), QUrl(QStringLiteral("https://forecast.example/v1/forecast")));
        const Items expected{item("latitude", "37.7749"), item("longitude", "-122.4194"),
            item("current",
                "temperature_2m,relative_humidity_2m,apparent_temperature,is_day,weather_code,wind_speed_10m"),
            item("daily", "weather_code,temperature_2m_max,temperature_2m_min"), item("timezone", "auto"),
            item("forecast_days", "4"), item("temperature_unit", "fahrenheit"), item("wind_speed_unit", "mph")};
        QCOMPARE(decodedItems(url), expected);
    }

    void celsiusGoesWithKilometres()
    {
        const QUrl url = forecastUrl(1, 2, TemperatureUnit::celsius);
        QCOMPARE(
            decodedItems(url).mid(6), (Items{item("temperature_unit", "celsius"), item("wind_speed_unit", "kmh")}));
    }

    void coordinatesAreWrittenInTheShortestForm_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<QString>("text");
        QTest::newRow("0.1 + 0.2") << 0.1 + 0.2 << QStringLiteral("0.30000000000000004");
        QTest::newRow("whole") << 51.0 << QStringLiteral("51.0");
        QTest::newRow("tiny") << 0.00001 << QStringLiteral("0.00001");
        QTest::newRow("long") << -37.81234567890123 << QStringLiteral("-37.81234567890123");
    }
    void coordinatesAreWrittenInTheShortestForm()
    {
        QFETCH(const double, latitude);
        const QString text = decodedItems(forecastUrl(latitude, 0, TemperatureUnit::celsius)).value(0).second;
        QTEST(text, "text");
        QCOMPARE(text.toDouble(), latitude);
    }

    void citiesAreSearchedByTheTrimmedText()
    {
        WeatherFixture fixture;
        std::optional<QList<WeatherLocation>> found;
        [[maybe_unused]] const auto unwatched = search(*fixture.service, QStringLiteral(" \n Berlin\t"), found);
        const QUrl url = fixture.client.requested.value(0);
        QCOMPARE(url.adjusted(QUrl::RemoveQuery), QUrl(QStringLiteral("https://geocoding.example/v1/search")));
        QCOMPARE(decodedItems(url),
            (Items{item("name", "Berlin"), item("count", "8"), item("language", "en"), item("format", "json")}));
        QVERIFY(fixture.client.answerJson(replies::bytes(replies::cities())));
        QCOMPARE(found->size(), 2);
    }

    void aCityMayHaveAnyName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("encoded");
        QTest::newRow("umlaut") << QStringLiteral("Köln") << QByteArray("K%C3%B6ln");
        QTest::newRow("ampersand") << QStringLiteral("A&count=99") << QByteArray("A%26count%3D99");
        QTest::newRow("plus") << QStringLiteral("A+B") << QByteArray("A%2BB");
        QTest::newRow("percent") << QStringLiteral("100%25") << QByteArray("100%2525");
        QTest::newRow("hash") << QStringLiteral("a#b?c") << QByteArray("a%23b%3Fc");
        QTest::newRow("space") << QStringLiteral("San Jose") << QByteArray("San%20Jose");
    }
    void aCityMayHaveAnyName()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, encoded);
        WeatherFixture fixture;
        std::optional<QList<WeatherLocation>> found;
        [[maybe_unused]] const auto unwatched = search(*fixture.service, name, found);
        QCOMPARE(fixture.client.requested.value(0).query(QUrl::FullyEncoded).toLatin1(),
            "name=" + encoded + "&count=8&language=en&format=json");
    }

    void aBlankQueryAsksNobody()
    {
        for (const char *blank : {"", "   ", " \n\t "}) {
            WeatherFixture fixture;
            std::optional<QList<WeatherLocation>> found;
            [[maybe_unused]] const auto unwatched = search(*fixture.service, QString::fromLatin1(blank), found);
            QVERIFY(found && found->isEmpty());
            QVERIFY(fixture.client.requested.isEmpty());
        }
    }

    void aFailedSearchFindsNothing()
    {
        WeatherFixture fixture;
        std::optional<QList<WeatherLocation>> found;
        [[maybe_unused]] const auto unwatched = search(*fixture.service, QStringLiteral("Berlin"), found);
        QVERIFY(!found);
        QVERIFY(fixture.client.fail());
        QVERIFY(found && found->isEmpty());
        QVERIFY(!fixture.service->lastError());
    }

    void aNewSearchGivesTheOldOneUp()
    {
        WeatherFixture fixture;
        std::optional<QList<WeatherLocation>> old;
        std::optional<QList<WeatherLocation>> latest;
        [[maybe_unused]] const auto unwatchedOld = search(*fixture.service, QStringLiteral("Ber"), old);
        [[maybe_unused]] const auto unwatchedLatest = search(*fixture.service, QStringLiteral("Berlin"), latest);
        QVERIFY(old && old->isEmpty());
        QCOMPARE(fixture.client.running(), 1);
        QVERIFY(fixture.client.answerJson(replies::bytes(replies::cities())));
        QCOMPARE(latest->size(), 2);
    }

    void aSearchAndARefreshDoNotDisturbEachOther()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        std::optional<QList<WeatherLocation>> found;
        [[maybe_unused]] const auto unwatched = search(*fixture.service, QStringLiteral("Berlin"), found);
        QCOMPARE(fixture.client.running(), 2);
        QVERIFY(fixture.answerForecast());
        QVERIFY(fixture.client.answerJson(replies::bytes(replies::cities())));
        QVERIFY(fixture.service->snapshot().has_value());
        QCOMPARE(found->size(), 2);
    }

    void aSearchEndsWithTheService()
    {
        WeatherFixture fixture;
        std::optional<QList<WeatherLocation>> found;
        [[maybe_unused]] const auto unwatched = search(*fixture.service, QStringLiteral("Berlin"), found);
        fixture.service.reset();
        QVERIFY(found && found->isEmpty());
        QCOMPARE(fixture.client.running(), 0);
    }
};

MOORLINE_TEST(WeatherRequestsTest);

#include "WeatherRequestsTest.moc"
