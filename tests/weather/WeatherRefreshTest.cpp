#include "WeatherFixture.h"
#include "harness/TestCase.h"

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

/// A refresh up to its fallback to the caller's address, with a location service that is allowed but too slow.
bool fallBack(WeatherFixture &fixture)
{
    fixture.clock.advance(WeatherService::locationTimeout);
    return fixture.answerIPWho() && fixture.answerForecast();
}

} // namespace

class WeatherRefreshTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
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

    void aRefreshThatIsOutdatedByItsOwnNewsCostsNoRetry()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        connect(fixture.service.get(), &WeatherService::resolvedLocationChanged, fixture.service.get(),
            [&fixture] { fixture.chooseCity(); });
        fixture.service->start();
        fixture.clock.advance(WeatherService::locationTimeout);
        QVERIFY(fixture.answerIPWho());
        QCOMPARE(fixture.service->locationRetriesRemaining(), 3);
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.service->locationSource(), LocationSource::manual);
        QCOMPARE(fixture.client.mostAtOnce, 1);
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

    void theChosenCityAsLastResortCostsNoLocationRetry()
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

MOORLINE_TEST(WeatherRefreshTest);

#include "WeatherRefreshTest.moc"
