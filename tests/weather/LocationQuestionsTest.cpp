#include "weather/LocationQuestions.h"

#include "LocationFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;
using Answer = LocationFixture::Answer;

namespace {

/// A system that asks anew each time it is told to.
struct Fixture : LocationFixture {
    Fixture()
        : LocationFixture(LocationAuthorization::notDetermined)
    {
        manager.asksOnlyOnce = false;
    }

    void want()
    {
        Answer answer;
        ask(answer);
    }

    void answer(LocationAuthorization decision)
    {
        manager.decide(decision);
        Q_EMIT manager.didAnswerRequest();
    }

    QSignalSpy advised{service.get(), &LocationService::anotherQuestionAdvised};
};

} // namespace

class LocationQuestionsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aQuestionThatIsLeftOpenHasAnHour()
    {
        Fixture fixture;
        fixture.want();
        fixture.clock.advance(3599s);
        fixture.want();
        QCOMPARE(fixture.manager.timesPermissionAsked, 1);
        fixture.clock.advance(1s);
        fixture.want();
        QCOMPARE(fixture.manager.timesPermissionAsked, 2);
        QCOMPARE(fixture.advised.size(), 0);
    }

    void theUsersWishDoesNotWait()
    {
        Fixture fixture;
        fixture.want();
        fixture.service->requestAuthorization();
        QCOMPARE(fixture.manager.timesPermissionAsked, 2);
    }

    void aNoThatSomebodyGaveHasAnHour()
    {
        Fixture fixture;
        fixture.want();
        fixture.clock.advance(2s);
        fixture.answer(LocationAuthorization::denied);
        fixture.clock.advance(3597s);
        fixture.want();
        QCOMPARE(fixture.manager.timesPermissionAsked, 1);
        QCOMPARE(fixture.advised.size(), 0);
        fixture.clock.advance(1s);
        fixture.want();
        QCOMPARE(fixture.manager.timesPermissionAsked, 2);
    }

    void aNoThatNobodyGaveIsQuestionedThreeTimes()
    {
        Fixture fixture;
        connect(fixture.service.get(), &LocationService::anotherQuestionAdvised, this, [&fixture] { fixture.want(); });
        fixture.want();
        for (int questions = 1; questions <= 3; ++questions) {
            fixture.clock.advance(1999ms);
            fixture.answer(LocationAuthorization::denied);
            fixture.clock.advance(29'999ms);
            QCOMPARE(fixture.manager.timesPermissionAsked, questions);
            fixture.clock.advance(1ms);
            QCOMPARE(fixture.manager.timesPermissionAsked, questions + 1);
        }
        fixture.answer(LocationAuthorization::denied);
        fixture.clock.advance(29s);
        fixture.want();
        QCOMPARE(fixture.manager.timesPermissionAsked, 4);
        QCOMPARE(fixture.clock.runningTimers(), 0);
        // Whoever wants a location may still ask.
        fixture.clock.advance(1s);
        fixture.want();
        QCOMPARE(fixture.manager.timesPermissionAsked, 5);
    }

    void aYesEndsTheQuestions()
    {
        Fixture fixture;
        fixture.want();
        fixture.answer(LocationAuthorization::denied);
        fixture.answer(LocationAuthorization::authorized);
        QCOMPARE(fixture.clock.runningTimers(), 0);
        fixture.clock.advance(1min);
        QCOMPARE(fixture.advised.size(), 0);
    }

    void aRefusalThatIsForgottenAdvisesAQuestion()
    {
        Fixture fixture;
        fixture.want();
        fixture.clock.advance(1min);
        fixture.answer(LocationAuthorization::denied);
        fixture.clock.advance(1h);
        fixture.manager.decide(LocationAuthorization::notDetermined);
        QCOMPARE(fixture.advised.size(), 1);
    }

    void aRefusalThatIsForgottenSoonIsNotQuestionedAtOnce()
    {
        Fixture fixture;
        fixture.want();
        fixture.clock.advance(1min);
        fixture.answer(LocationAuthorization::denied);
        fixture.manager.decide(LocationAuthorization::notDetermined);
        QCOMPARE(fixture.advised.size(), 0);
    }

    void whereNobodyWantedALocationNothingIsAdvised()
    {
        Fixture fixture;
        fixture.manager.decide(LocationAuthorization::denied);
        fixture.manager.decide(LocationAuthorization::notDetermined);
        QCOMPARE(fixture.advised.size(), 0);
    }

    void aSystemThatAsksOnlyOnceIsAskedEveryTime()
    {
        LocationFixture fixture(LocationAuthorization::notDetermined);
        for (int times = 1; times <= 2; ++times) {
            Answer answer;
            fixture.ask(answer);
            QCOMPARE(fixture.manager.timesPermissionAsked, times);
        }
    }

    void thePlaceIsWantedToTheTown()
    {
        const LocationFixture fixture;
        QCOMPARE(fixture.manager.accuracy, std::optional(LocationAccuracy::town));
    }
};

MOORLINE_TEST(LocationQuestionsTest);

#include "LocationQuestionsTest.moc"
