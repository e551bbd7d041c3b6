#include "WeatherFixture.h"
#include "support/TestCase.h"

#include <QRegularExpression>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;
using LocationSource = WeatherService::LocationSource;

namespace {

QCoro::Task<> refreshed(WeatherService &service, bool &isDone)
{
    co_await service.refresh();
    isDone = true;
}

void refreshNow(WeatherFixture &fixture)
{
    [[maybe_unused]] const auto unwatched = fixture.service->refresh();
}

/// A refresh up to its fallback to the caller's address, with a location service that is allowed but too slow.
bool fallBack(WeatherFixture &fixture)
{
    fixture.clock.advance(WeatherService::locationTimeout);
    return fixture.answerIPWho() && fixture.answerForecast();
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
        QVERIFY(fixture.client.answer({std::nullopt, 503, {}, {}}));
        QVERIFY(!fixture.service->snapshot());
        QCOMPARE(fixture.service->lastError(), QStringLiteral("Weather service unavailable"));
    }

    void refreshesEveryTenMinutes()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.clock.repeatingIntervals(), QList<std::chrono::milliseconds>{600s});
        fixture.clock.advance(599s);
        QCOMPARE(fixture.client.requested.size(), 1);
        for (int round = 2; round < 10; ++round) {
            fixture.clock.advance(round == 2 ? 1s : 600s);
            QCOMPARE(fixture.client.requested.size(), round);
            QVERIFY(fixture.answerForecast());
        }
    }

    void aRefreshIsOverWhenItsAnswerIsThere()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        bool isDone = false;
        [[maybe_unused]] const auto unwatched = refreshed(*fixture.service, isDone);
        QVERIFY(!isDone);
        QVERIFY(fixture.answerForecast());
        QVERIFY(isDone);
    }

    void everyChangeOfTheSettingsRefreshes()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        QVERIFY(fixture.answerForecast());
        fixture.change([](Settings &settings) { settings.showSeconds = true; });
        QVERIFY(fixture.answerForecast());
        fixture.change([](Settings &settings) {
            settings.location.name = QStringLiteral("Oslo");
            settings.location.latitude = 59.5;
        });
        QCOMPARE(fixture.service->resolvedLocation()->name, QStringLiteral("Oslo"));
        QVERIFY(fixture.client.next().query().startsWith(QStringLiteral("latitude=59.5&")));
    }

    void beforeTheStartSettingsDoNothing()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        QVERIFY(fixture.client.requested.isEmpty());
    }

    void aStormOfChangesHasOneRequestUnderWay()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        for (int i = 0; i < 100; ++i)
            fixture.change([i](Settings &settings) { settings.location.latitude = i / 10.0; });
        QCOMPARE(fixture.client.mostAtOnce, 1);
        QCOMPARE(fixture.client.running(), 1);
        QVERIFY(fixture.client.next().query().startsWith(QStringLiteral("latitude=9.9&")));
        QVERIFY(fixture.answerForecast());
        QVERIFY(!fixture.client.answerJson({}));
    }

    void aStormWhileTheCallerIsLookedForToo()
    {
        WeatherFixture fixture;
        fixture.service->start();
        for (int i = 0; i < 100; ++i) {
            fixture.change([i](Settings &settings) { settings.bottomGap = i; });
            if (i % 3 == 0)
                fixture.client.fail();
            if (i % 7 == 0)
                fixture.client.answerJson(replies::bytes(replies::ipWho()));
        }
        fixture.change([](Settings &settings) { settings.bottomGap = 2; });
        QCOMPARE(fixture.client.mostAtOnce, 1);
        QVERIFY(fixture.answerIPWho());
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.client.running(), 0);
        QCOMPARE(fixture.service->snapshot()->temperature, 60.4);
    }

    void aRefreshThatWasGivenUpPublishesNothing()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        bool isFirstDone = false;
        [[maybe_unused]] const auto first = refreshed(*fixture.service, isFirstDone);
        QSignalSpy failed(fixture.service.get(), &WeatherService::lastErrorChanged);
        bool isSecondDone = false;
        [[maybe_unused]] const auto second = refreshed(*fixture.service, isSecondDone);
        QVERIFY(isFirstDone && !isSecondDone);
        QCOMPARE(failed.size(), 0);
        QVERIFY(fixture.answerForecast());
        QVERIFY(isSecondDone);
        QCOMPARE(failed.size(), 0);
    }

    void aRefreshGivenUpWhileItWaitsForTheLocationDoesNotGoOn()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        fixture.service->start();
        fixture.chooseCity();
        QVERIFY(fixture.answerForecast());
        fixture.clock.advance(WeatherService::locationTimeout);
        QCOMPARE(fixture.client.requested.size(), 1);
        QCOMPARE(fixture.service->locationSource(), LocationSource::manual);
    }

    void aSlowLocationServiceIsTriedThreeTimesAgain()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        fixture.service->start();
        for (int remaining = 2; remaining >= 0; --remaining) {
            QVERIFY(fallBack(fixture));
            QCOMPARE(fixture.service->locationSource(), LocationSource::ipAddress);
            QCOMPARE(fixture.service->locationRetriesRemaining(), remaining);
            const int asked = fixture.manager.timesLocationAsked;
            fixture.clock.advance(WeatherService::locationRetryDelay - 1ms);
            QCOMPARE(fixture.manager.timesLocationAsked, asked);
            fixture.clock.advance(1ms);
            QCOMPARE(fixture.manager.timesLocationAsked, asked + 1);
        }
        // The fourth fallback is the last for this life.
        QVERIFY(fallBack(fixture));
        QCOMPARE(fixture.service->locationRetriesRemaining(), 0);
        fixture.clock.advance(60s);
        QCOMPARE(fixture.manager.timesLocationAsked, 4);
        QCOMPARE(fixture.client.running(), 0);
    }

    void aRetryThatGetsAFixShowsIt()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        fixture.service->start();
        QVERIFY(fallBack(fixture));
        fixture.clock.advance(WeatherService::locationRetryDelay);
        Q_EMIT fixture.manager.didUpdateLocations({{48.14, 11.58, fixture.clock.now()}});
        QVERIFY(fixture.geocoder.answer({}));
        QCOMPARE(fixture.service->locationSource(), LocationSource::locationServices);
        QCOMPARE(fixture.service->resolvedLocation()->name, QStringLiteral("Current location"));
        QVERIFY(fixture.answerForecast());
    }

    void retriesAreNeverGivenBack()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        fixture.service->start();
        for (int i = 0; i < 4; ++i) {
            QVERIFY(fallBack(fixture));
            fixture.clock.advance(WeatherService::locationRetryDelay);
        }
        fixture.clock.advance(24h);
        while (fixture.client.running() > 0)
            QVERIFY(fixture.answerIPWho() || fixture.answerForecast());
        QCOMPARE(fixture.service->locationRetriesRemaining(), 0);
    }

    void withoutPermissionThereIsNoRetry()
    {
        WeatherFixture fixture;
        fixture.service->start();
        QVERIFY(fixture.answerIPWho());
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.service->locationRetriesRemaining(), 3);
        fixture.clock.advance(60s);
        QCOMPARE(fixture.client.requested.size(), 2);
    }

    void theChosenCityAsLastResortSchedulesNoRetry()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        fixture.service->start();
        fixture.clock.advance(WeatherService::locationTimeout);
        QVERIFY(fixture.client.fail());
        QVERIFY(fixture.client.fail());
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.service->locationRetriesRemaining(), 3);
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

    void theChosenCityIsLoggedToo()
    {
        WeatherFixture fixture(true);
        QTest::ignoreMessage(QtInfoMsg,
            "Moorline: location source=Chosen city auth=denied city=San Francisco lat=37.7749 lon=-122.4194");
        fixture.chooseCity();
        fixture.service->start();
    }

    void everySourceHasItsText()
    {
        QCOMPARE(text(LocationSource::locationServices), QStringLiteral("Location Services"));
        QCOMPARE(text(LocationSource::ipAddress), QStringLiteral("IP address"));
        QCOMPARE(text(LocationSource::manual), QStringLiteral("Chosen city"));
    }

    void theEndOfTheServiceGivesEverythingUp_data()
    {
        QTest::addColumn<int>("answered");
        QTest::newRow("while the location is looked for") << 0;
        QTest::newRow("while the caller is looked for") << 1;
        QTest::newRow("while the caller is looked for elsewhere") << 2;
        QTest::newRow("while the forecast is fetched") << 3;
    }
    void theEndOfTheServiceGivesEverythingUp()
    {
        QFETCH(const int, answered);
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        bool isDone = false;
        [[maybe_unused]] const auto unwatched = refreshed(*fixture.service, isDone);
        if (answered > 0)
            fixture.clock.advance(WeatherService::locationTimeout);
        if (answered > 1)
            QVERIFY(fixture.client.fail());
        if (answered > 2)
            QVERIFY(fixture.answerIPAPI());
        fixture.service.reset();
        QCOMPARE(fixture.client.running(), 0);
        fixture.clock.advance(1h);
        QVERIFY(isDone);
        QCOMPARE(fixture.client.running(), 0);
    }
};

MOORLINE_TEST(WeatherServiceTest);

#include "WeatherServiceTest.moc"
