#include "WeatherFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using LocationSource = WeatherService::LocationSource;

namespace {

void refreshNow(WeatherFixture &fixture)
{
    [[maybe_unused]] const auto unwatched = fixture.service->refresh();
}

} // namespace

class WeatherServiceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void beginsWithNothing()
    {
        WeatherFixture fixture;
        QVERIFY(!fixture.service->snapshot());
        QVERIFY(!fixture.service->resolvedLocation());
        QVERIFY(!fixture.service->lastError());
        QCOMPARE(fixture.service->locationSource(), LocationSource::manual);
        QCOMPARE(fixture.service->locationRetriesRemaining(), 3);
        QVERIFY(fixture.client.requested.isEmpty());
    }

    void aChosenCityIsAskedForAtOnce()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        QCOMPARE(fixture.service->locationSource(), LocationSource::manual);
        QCOMPARE(fixture.service->resolvedLocation()->name, QStringLiteral("San Francisco"));
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.service->snapshot()->temperature, 60.4);
        QCOMPARE(fixture.service->snapshot()->fetchedAt, fixture.clock.now());
        QVERIFY(!fixture.service->lastError());
        QCOMPARE(fixture.client.running(), 0);
    }

    void theLocationServiceComesFirst()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        fixture.manager.known = PositionFix{48.14, 11.58, fixture.clock.now()};
        fixture.service->start();
        Placemark munich;
        munich.locality = QStringLiteral("Munich");
        QVERIFY(fixture.geocoder.answer({munich}));
        QCOMPARE(fixture.service->locationSource(), LocationSource::locationServices);
        QCOMPARE(fixture.service->resolvedLocation()->name, QStringLiteral("Munich"));
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.client.requested.size(), 1);
        QCOMPARE(fixture.service->locationRetriesRemaining(), 3);
    }

    void thenTheCallersAddressIsTried()
    {
        WeatherFixture fixture;
        fixture.service->start();
        QVERIFY(!fixture.service->resolvedLocation());
        QVERIFY(fixture.answerIPWho());
        QCOMPARE(fixture.service->locationSource(), LocationSource::ipAddress);
        QCOMPARE(fixture.service->resolvedLocation()->name, QStringLiteral("Munich"));
        QVERIFY(fixture.answerForecast());
    }

    void thenTheOtherServiceForAddresses()
    {
        WeatherFixture fixture;
        fixture.service->start();
        QVERIFY(fixture.isAskedFor(QStringLiteral("ipwho.example")));
        QVERIFY(fixture.client.fail());
        QVERIFY(fixture.answerIPAPI());
        QCOMPARE(fixture.service->locationSource(), LocationSource::ipAddress);
        QCOMPARE(fixture.service->resolvedLocation()->name, QStringLiteral("Oslo"));
        QVERIFY(fixture.answerForecast());
    }

    void theChosenCityIsTheLastResort()
    {
        WeatherFixture fixture;
        fixture.service->start();
        QVERIFY(fixture.client.fail());
        QVERIFY(fixture.client.fail());
        QCOMPARE(fixture.service->locationSource(), LocationSource::manual);
        QCOMPARE(fixture.service->resolvedLocation()->name, QStringLiteral("San Francisco"));
        QVERIFY(fixture.answerForecast());
        QVERIFY(!fixture.service->lastError());
    }

    void anUndecidedPermissionIsAskedForWhileTheAddressIsUsed()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::notDetermined;
        fixture.service->start();
        QCOMPARE(fixture.manager.timesPermissionAsked, 1);
        QVERIFY(fixture.answerIPWho());
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.service->locationSource(), LocationSource::ipAddress);
        QCOMPARE(fixture.service->locationRetriesRemaining(), 3);
    }

    void aFailureKeepsTheWeatherAndItsReasonIsKnown()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        QVERIFY(fixture.answerForecast());
        refreshNow(fixture);
        QVERIFY(fixture.client.fail(QStringLiteral("offline")));
        QCOMPARE(fixture.service->snapshot()->temperature, 60.4);
        QCOMPARE(fixture.service->lastError(), QStringLiteral("offline"));
        refreshNow(fixture);
        QCOMPARE(fixture.service->lastError(), QStringLiteral("offline"));
        QVERIFY(fixture.answerForecast());
        QVERIFY(!fixture.service->lastError());
    }

    void aFirstFailureLeavesNoWeather()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        QVERIFY(fixture.client.answer({std::nullopt, 503, {}}));
        QVERIFY(!fixture.service->snapshot());
        QCOMPARE(fixture.service->lastError(), QStringLiteral("Weather service unavailable"));
    }

    void changesAreAnnouncedOnlyWhenTheyAre()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        QSignalSpy snapshots(fixture.service.get(), &WeatherService::snapshotChanged);
        QSignalSpy locations(fixture.service.get(), &WeatherService::resolvedLocationChanged);
        QSignalSpy sources(fixture.service.get(), &WeatherService::locationSourceChanged);
        QSignalSpy errors(fixture.service.get(), &WeatherService::lastErrorChanged);
        for (int i = 0; i < 3; ++i) {
            refreshNow(fixture);
            QVERIFY(fixture.answerForecast());
        }
        // Time stood still: each of the three is the same weather.
        QCOMPARE(snapshots.size(), 1);
        QCOMPARE(locations.size(), 1);
        QCOMPARE(sources.size(), 0);
        QCOMPARE(errors.size(), 0);
        for (int i = 0; i < 2; ++i) {
            refreshNow(fixture);
            QVERIFY(fixture.client.fail(QStringLiteral("offline")));
        }
        QCOMPARE(errors.size(), 1);
        refreshNow(fixture);
        QVERIFY(fixture.answerForecast());
        QCOMPARE(errors.size(), 2);
        QCOMPARE(snapshots.size(), 1);
    }

    void theDebugLineTellsWhereTheLocationCameFrom()
    {
        WeatherFixture fixture(true);
        fixture.service->start();
        QTest::ignoreMessage(
            QtInfoMsg, "Moorline: location source=IP address auth=denied city=Munich lat=48.1351253 lon=11.5819806");
        QVERIFY(fixture.answerIPWho());
    }

    void theDebugLineIsOneLine()
    {
        WeatherFixture fixture(true);
        fixture.service->start();
        QJsonObject reply = replies::ipWho();
        reply[QStringLiteral("city")] = QStringLiteral("Mun\u001b[31mich\nMoorline: all is well");
        QTest::ignoreMessage(QtInfoMsg,
            "Moorline: location source=IP address auth=denied city=Mun[31mich Moorline: all is well lat=48.1351253 "
            "lon=11.5819806");
        QVERIFY(fixture.answerIPWho(reply));
    }

    void theChosenCityIsLoggedToo()
    {
        WeatherFixture fixture(true);
        QTest::ignoreMessage(QtInfoMsg,
            "Moorline: location source=Chosen city auth=denied city=San Francisco lat=37.7749 lon=-122.4194");
        fixture.chooseCity();
        fixture.service->start();
    }

    void withoutDebuggingNothingIsLogged()
    {
        // A message that nobody announced is no failure by itself, so they are counted.
        static int messages = 0;
        messages = 0;
        const auto previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++messages; });
        WeatherFixture fixture;
        fixture.service->start();
        const bool isAnswered = fixture.answerIPWho() && fixture.answerForecast();
        qInstallMessageHandler(previous);
        QVERIFY(isAnswered);
        QCOMPARE(messages, 0);
    }

    void everySourceHasItsText()
    {
        QCOMPARE(text(LocationSource::locationServices), QStringLiteral("Location Services"));
        QCOMPARE(text(LocationSource::ipAddress), QStringLiteral("IP address"));
        QCOMPARE(text(LocationSource::manual), QStringLiteral("Chosen city"));
    }
};

MOORLINE_TEST(WeatherServiceTest);

#include "WeatherServiceTest.moc"
