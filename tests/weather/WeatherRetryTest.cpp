#include "WeatherFixture.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// The weather of a chosen city, whose every request is answered at once, and what came of it.
struct Weather : WeatherFixture {
    Weather()
    {
        chooseCity();
        service->start();
    }

    void refreshNow() { [[maybe_unused]] const auto unwatched = service->refresh(); }

    /// The seconds, counted from now, at which a forecast is asked for while all of them fail.
    QList<int> failuresWithin(std::chrono::seconds duration)
    {
        QList<int> moments;
        for (int second = 1; second <= duration.count(); ++second) {
            clock.advance(1s);
            if (client.fail())
                moments.append(second);
        }
        return moments;
    }
};

} // namespace

/// What follows a refresh that failed.
class WeatherRetryTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFailureIsTriedAgainThreeTimesThenOnTheTimer()
    {
        Weather weather;
        QVERIFY(weather.client.fail());
        QCOMPARE(weather.failuresWithin(1900s), (QList<int>{20, 60, 180, 600, 1200, 1800}));
    }

    void anAnswerThatCannotBeUsedIsAFailureToo_data()
    {
        QTest::addColumn<HttpAnswer>("answer");
        QTest::newRow("an error of the server") << HttpAnswer{std::nullopt, 503, {}};
        QTest::newRow("a page") << FakeHttpClient::json("<!DOCTYPE html><html></html>");
        QTest::newRow("nothing current") << FakeHttpClient::json("{}");
    }
    void anAnswerThatCannotBeUsedIsAFailureToo()
    {
        QFETCH(const HttpAnswer, answer);
        Weather weather;
        QVERIFY(weather.client.answer(answer));
        QCOMPARE(weather.failuresWithin(200s), (QList<int>{20, 60, 180}));
    }

    void afterASuccessOnlyTheTimerAsks()
    {
        Weather weather;
        QVERIFY(weather.answerForecast());
        QCOMPARE(weather.failuresWithin(600s), QList<int>{600});
    }

    void aSuccessEndsTheRow()
    {
        Weather weather;
        QVERIFY(weather.client.fail());
        QCOMPARE(weather.failuresWithin(30s), QList<int>{20});
        weather.clock.advance(30s);
        QVERIFY(weather.answerForecast());
        QVERIFY(!weather.service->lastError());
        QCOMPARE(weather.failuresWithin(539s), QList<int>());
        // The tick that follows begins a row of its own.
        QCOMPARE(weather.failuresWithin(200s), (QList<int>{1, 21, 61, 181}));
    }

    void anAnswerThatIsLongInComingSkipsTheMomentsItMissed()
    {
        Weather weather;
        QVERIFY(weather.client.fail());
        weather.clock.advance(20s);
        QCOMPARE(weather.client.running(), 1);
        weather.clock.advance(40s);
        // The moment went by, and nobody gave up what was under way.
        QCOMPARE(weather.client.requested.size(), 2);
        QVERIFY(weather.client.fail());
        QCOMPARE(weather.failuresWithin(130s), QList<int>{120});
    }

    void freshReasonBeginsTheRowAnew()
    {
        Weather weather;
        QVERIFY(weather.client.fail());
        QCOMPARE(weather.failuresWithin(300s), (QList<int>{20, 60, 180}));
        // As when the way is back, while names do not resolve yet.
        weather.refreshNow();
        QVERIFY(weather.client.fail());
        QCOMPARE(weather.failuresWithin(250s), (QList<int>{20, 60, 180}));
    }

    void freshReasonPutsOffWhatWasToFollow()
    {
        Weather weather;
        QVERIFY(weather.client.fail());
        weather.clock.advance(15s);
        weather.refreshNow();
        QVERIFY(weather.client.fail());
        QCOMPARE(weather.failuresWithin(70s), (QList<int>{20, 60}));
    }

    void nothingIsTriedAgainWhileARefreshIsUnderWay()
    {
        Weather weather;
        QVERIFY(weather.client.fail());
        weather.clock.advance(19s);
        weather.refreshNow();
        const auto asked = weather.client.requested.size();
        weather.clock.advance(60s);
        QCOMPARE(weather.client.requested.size(), asked);
        QVERIFY(weather.answerForecast());
        QCOMPARE(weather.failuresWithin(200s), QList<int>());
    }

    void aCallerWhoIsNotFoundIsLookedForAgain()
    {
        WeatherFixture fixture;
        fixture.service->start();
        // Names resolved only just in time for the forecast: it is that of the last resort.
        QVERIFY(fixture.client.fail());
        QVERIFY(fixture.client.fail());
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.placeOfTheWeather(), QStringLiteral("San Francisco"));
        QVERIFY(!fixture.service->lastError());
        fixture.clock.advance(20s);
        QVERIFY(fixture.answerIPWho());
        QVERIFY(fixture.answerForecast());
        QCOMPARE(fixture.placeOfTheWeather(), QStringLiteral("Munich"));
        fixture.clock.advance(579s);
        QCOMPARE(fixture.client.running(), 0);
    }

    void aSlowLocationServiceAndAFailureAskOnce()
    {
        WeatherFixture fixture;
        fixture.manager.authorization = LocationAuthorization::authorized;
        fixture.service->start();
        fixture.clock.advance(WeatherService::locationTimeout);
        QVERIFY(fixture.answerIPWho());
        QVERIFY(fixture.client.fail());
        // Both come after 20 seconds: one gives the other up.
        fixture.clock.advance(20s);
        QCOMPARE(fixture.manager.timesLocationAsked, 2);
        Q_EMIT fixture.manager.didUpdateLocations({{48.14, 11.58, fixture.clock.now()}});
        QVERIFY(fixture.geocoder.answer({}));
        QVERIFY(fixture.client.fail());
        // The row goes on: that refresh was part of it.
        fixture.clock.advance(39s);
        QCOMPARE(fixture.client.running(), 0);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.manager.timesLocationAsked, 3);
    }

    void withANetworkWakingRefreshesAtOnce()
    {
        Weather weather;
        QVERIFY(weather.answerForecast());
        weather.service->refreshIfReachable();
        QVERIFY(weather.answerForecast());
    }

    void withoutANetworkWakingWaitsForIt()
    {
        Weather weather;
        QVERIFY(weather.answerForecast());
        weather.network.isUp = false;
        weather.service->refreshIfReachable();
        weather.clock.advance(300s);
        QCOMPARE(weather.client.requested.size(), 1);
        QVERIFY(!weather.service->lastError());
    }

    void serversThatNeedNoInternetAreAskedWithoutANetwork()
    {
        WeatherFixture fixture;
        fixture.chooseCity();
        WeatherEndpoints near = WeatherFixture::endpoints();
        near.needInternet = false;
        WeatherService service(
            {fixture.store, fixture.clock, fixture.client, fixture.location, fixture.network, near, false});
        fixture.network.isUp = false;
        service.refreshIfReachable();
        QVERIFY(fixture.answerForecast());
    }

    void nothingFollowsTheEndOfTheService()
    {
        Weather weather;
        QVERIFY(weather.client.fail());
        weather.service.reset();
        QCOMPARE(weather.clock.runningTimers(), 0);
    }
};

MOORLINE_TEST(WeatherRetryTest);

#include "WeatherRetryTest.moc"
