#include "WeatherFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString sanFrancisco = QStringLiteral("San Francisco");
const QString oslo = QStringLiteral("Oslo");
const QString munich = QStringLiteral("Munich");

void refreshNow(WeatherFixture &fixture)
{
    [[maybe_unused]] const auto unwatched = fixture.service->refresh();
}

} // namespace

/// Whose weather is kept, in whatever order things happen.
class WeatherPlaceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void weatherIsThatOfThePlaceThatWasAskedAbout()
    {
        WeatherFixture fixture;
        fixture.service->start();
        QVERIFY(fixture.answerIPWho());
        QCOMPARE(fixture.placeOfTheWeather(), QString());
        QVERIFY(fixture.answerForecast());
        const WeatherLocation expected{munich, QStringLiteral("Bavaria"), QStringLiteral("Germany"), 48.1351253,
            11.5819806, QStringLiteral("Europe/Berlin")};
        QCOMPARE(fixture.service->snapshot()->place, expected);
    }

    void aCallerWhoIsNotFoundAnyMoreKeepsTheNameOfTheWeather()
    {
        WeatherFixture fixture;
        fixture.service->start();
        QVERIFY(fixture.answerIPWho());
        QVERIFY(fixture.answerForecast());
        // As after a sleep, before the network is up.
        refreshNow(fixture);
        for (int request = 0; request < 3; ++request)
            QVERIFY(fixture.client.fail());
        QCOMPARE(fixture.service->resolvedLocation()->name, sanFrancisco);
        QCOMPARE(fixture.placeOfTheWeather(), munich);
        QCOMPARE(fixture.service->snapshot()->temperature, 60.4);
    }

    void aCityThatIsChosenGivesItsNameWithItsWeather()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        QVERIFY(fixture.answerForecast());
        fixture.chooseCity(oslo, 59.91);
        QCOMPARE(fixture.service->resolvedLocation()->name, oslo);
        QCOMPARE(fixture.placeOfTheWeather(), sanFrancisco);
        QVERIFY(fixture.client.fail());
        QCOMPARE(fixture.placeOfTheWeather(), sanFrancisco);
        refreshNow(fixture);
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.placeOfTheWeather(), oslo);
    }

    void aCityThatIsChosenDuringARefreshTakesItsPlace()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        fixture.chooseCity(oslo, 59.91);
        QCOMPARE(fixture.client.running(), 1);
        QVERIFY(fixture.client.next().query().startsWith(QStringLiteral("latitude=59.91&")));
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.placeOfTheWeather(), oslo);
        QCOMPARE(fixture.service->resolvedLocation()->name, oslo);
    }

    void aCityThatIsChosenWhileTheCallerIsLookedForTakesItsPlace()
    {
        WeatherFixture fixture;
        fixture.service->start();
        fixture.chooseCity(oslo, 59.91);
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.client.running(), 0);
        QCOMPARE(fixture.placeOfTheWeather(), oslo);
    }

    void anotherPlaceWithTheSameWeatherIsNews()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        QVERIFY(fixture.answerForecast());
        QSignalSpy snapshots(fixture.service.get(), &WeatherService::snapshotChanged);
        fixture.change([](Settings &settings) { settings.location.name = oslo; });
        QCOMPARE(snapshots.size(), 0);
        QVERIFY(fixture.answerForecast());
        QCOMPARE(snapshots.size(), 1);
        QCOMPARE(fixture.placeOfTheWeather(), oslo);
    }

    void anotherUnitThatFailsKeepsTheWeatherWhole()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        QVERIFY(fixture.answerForecast());
        const auto before = fixture.service->snapshot();
        fixture.change([](Settings &settings) { settings.temperatureUnit = TemperatureUnit::celsius; });
        QVERIFY(fixture.client.fail());
        QCOMPARE(fixture.service->snapshot(), before);
    }

    void theForecastIsThatOfTheMachinesOwnPlace()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        fixture.manager.known = PositionFix{48.1372, -11.5756, fixture.clock.now()};
        fixture.service->start();
        QVERIFY(fixture.geocoder.answer({}));
        QVERIFY(fixture.isAskedFor(QStringLiteral("forecast.example")));
        QVERIFY(fixture.client.next().query().startsWith(QStringLiteral("latitude=48.1372&longitude=-11.5756&")));
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.service->snapshot()->place.latitude, 48.1372);
        QCOMPARE(fixture.service->snapshot()->place.longitude, -11.5756);
    }

    void theForecastIsThatOfTheCallersPlace()
    {
        WeatherFixture fixture;
        fixture.service->start();
        QVERIFY(fixture.answerIPWho());
        QVERIFY(fixture.client.next().query().startsWith(QStringLiteral("latitude=48.1351253&longitude=11.5819806&")));
    }
};

MOORLINE_TEST(WeatherPlaceTest);

#include "WeatherPlaceTest.moc"
