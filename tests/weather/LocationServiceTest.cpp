#include "LocationFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;
using Answer = LocationFixture::Answer;
using Availability = LocationService::Availability;

class LocationServiceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void availabilityFollowsTheSystem_data()
    {
        QTest::addColumn<bool>("isEnabled");
        QTest::addColumn<LocationAuthorization>("authorization");
        QTest::addColumn<Availability>("availability");
        QTest::newRow("undecided") << true << LocationAuthorization::notDetermined << Availability::notDetermined;
        QTest::newRow("restricted") << true << LocationAuthorization::restricted << Availability::restricted;
        QTest::newRow("denied") << true << LocationAuthorization::denied << Availability::denied;
        QTest::newRow("authorized") << true << LocationAuthorization::authorized << Availability::authorized;
        QTest::newRow("something new") << true << LocationAuthorization::unknown << Availability::denied;
        QTest::newRow("off") << false << LocationAuthorization::authorized << Availability::servicesOff;
        QTest::newRow("off, undecided") << false << LocationAuthorization::notDetermined << Availability::servicesOff;
    }
    void availabilityFollowsTheSystem()
    {
        QFETCH(const bool, isEnabled);
        QFETCH(const LocationAuthorization, authorization);
        LocationFixture fixture(LocationAuthorization::notDetermined);
        fixture.manager.isEnabled = isEnabled;
        fixture.manager.decide(authorization);
        QTEST(fixture.service->availability(), "availability");
        // Also as it is found at the start.
        fixture.service = std::make_unique<LocationService>(fixture.manager, fixture.geocoder, fixture.clock);
        QTEST(fixture.service->availability(), "availability");
    }

    void availabilityIsAnnouncedOnlyWhenItChanges()
    {
        LocationFixture fixture(LocationAuthorization::notDetermined);
        QSignalSpy changed(fixture.service.get(), &LocationService::availabilityChanged);
        fixture.manager.decide(LocationAuthorization::notDetermined);
        QCOMPARE(changed.size(), 0);
        fixture.manager.decide(LocationAuthorization::denied);
        fixture.manager.decide(LocationAuthorization::denied);
        QCOMPARE(changed.size(), 1);
    }

    void aYesIsAnnouncedAndANoIsNot()
    {
        LocationFixture fixture(LocationAuthorization::notDetermined);
        QSignalSpy granted(fixture.service.get(), &LocationService::authorizationGranted);
        fixture.manager.decide(LocationAuthorization::denied);
        QCOMPARE(granted.size(), 0);
        fixture.manager.decide(LocationAuthorization::authorized);
        QCOMPARE(granted.size(), 1);
    }

    void theFirstQuestionAsksForPermissionAndDoesNotWait()
    {
        LocationFixture fixture(LocationAuthorization::notDetermined);
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        QVERIFY(answer.came && !answer.location);
        QCOMPARE(fixture.manager.timesPermissionAsked, 1);
        QCOMPARE(fixture.manager.timesLocationAsked, 0);
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }

    void withoutPermissionNobodyIsAsked()
    {
        for (const auto refused : {LocationAuthorization::denied, LocationAuthorization::restricted}) {
            LocationFixture fixture(refused);
            fixture.manager.known = fixture.fixOfAge(0s);
            Answer answer;
            [[maybe_unused]] const auto unwatched = fixture.ask(answer);
            QVERIFY(answer.came && !answer.location);
            QCOMPARE(fixture.manager.timesPermissionAsked, 0);
            QCOMPARE(fixture.manager.timesLocationAsked, 0);
        }
    }

    void permissionIsLookedAtAnewForEachQuestion()
    {
        LocationFixture fixture(LocationAuthorization::denied);
        fixture.manager.authorization = LocationAuthorization::authorized;
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        QVERIFY(!answer.came);
        QCOMPARE(fixture.service->availability(), Availability::authorized);
    }

    void aPositionOf299SecondsIsUsedWithoutAsking()
    {
        LocationFixture fixture;
        fixture.manager.known = fixture.fixOfAge(299s);
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        QCOMPARE(fixture.manager.timesLocationAsked, 0);
        QVERIFY(fixture.geocoder.answer({munich}));
        QCOMPARE(answer.location->name, QStringLiteral("Munich"));
    }

    void aPositionOf300SecondsIsTooOld()
    {
        LocationFixture fixture;
        fixture.manager.known = fixture.fixOfAge(300s);
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        QCOMPARE(fixture.manager.timesLocationAsked, 1);
        QVERIFY(fixture.geocoder.questions.isEmpty());
    }

    void aPositionFromTomorrowIsNotBelieved()
    {
        LocationFixture fixture;
        fixture.manager.known = fixture.fixOfAge(-24h);
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        QCOMPARE(fixture.manager.timesLocationAsked, 1);
    }

    void theLastOfSeveralPositionsCounts()
    {
        LocationFixture fixture;
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        fixture.deliver({{1, 2, fixture.clock.now()}, {48.14, 11.58, fixture.clock.now()}});
        QCOMPARE(fixture.geocoder.questions.size(), 1);
        QCOMPARE(fixture.geocoder.questions.first().latitude, 48.14);
        QCOMPARE(fixture.geocoder.questions.first().longitude, 11.58);
        QVERIFY(fixture.geocoder.answer({}));
        QVERIFY(answer.came);
    }

    void anEmptyListOfPositionsIsNone()
    {
        LocationFixture fixture;
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        fixture.deliver({});
        QVERIFY(answer.came && !answer.location);
    }

    void aFailureIsNoPosition()
    {
        LocationFixture fixture;
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        Q_EMIT fixture.manager.didFail();
        QVERIFY(answer.came && !answer.location);
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }

    void twoCallersShareOneRequestAndItsAnswer()
    {
        LocationFixture fixture;
        Answer one;
        Answer other;
        [[maybe_unused]] const auto unwatchedOne = fixture.ask(one);
        fixture.clock.advance(5s);
        [[maybe_unused]] const auto unwatchedOther = fixture.ask(other);
        QCOMPARE(fixture.manager.timesLocationAsked, 1);
        fixture.deliver({fixture.fixOfAge(0s)});
        // And one name.
        QVERIFY(fixture.geocoder.answer({munich}));
        QVERIFY(!fixture.geocoder.answer({munich}));
        QVERIFY(one.location.has_value());
        QCOMPARE(one.location, other.location);
    }

    void callersOfOneKnownPositionShareItsName()
    {
        LocationFixture fixture;
        fixture.manager.known = fixture.fixOfAge(0s);
        Answer one;
        Answer other;
        [[maybe_unused]] const auto unwatchedOne = fixture.ask(one);
        [[maybe_unused]] const auto unwatchedOther = fixture.ask(other);
        QCOMPARE(fixture.geocoder.questions.size(), 1);
        QVERIFY(fixture.geocoder.answer({munich}));
        QVERIFY(one.location && one.location == other.location);
        QCOMPARE(fixture.clock.runningTimers(), 0);
        // Which is asked for again the next time.
        Answer next;
        [[maybe_unused]] const auto unwatchedNext = fixture.ask(next);
        QCOMPARE(fixture.geocoder.questions.size(), 1);
        QVERIFY(fixture.geocoder.answer({munich}));
        QVERIFY(next.location);
    }

    void aPositionThatNobodyWantsAnyMoreIsNotNamed()
    {
        LocationFixture fixture;
        bool isWanted = true;
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer, [&isWanted] { return isWanted; });
        isWanted = false;
        fixture.deliver({fixture.fixOfAge(0s)});
        QVERIFY(answer.came && !answer.location);
        QVERIFY(fixture.geocoder.questions.isEmpty());
    }

    void everyCallerGivesUpWhenNothingComesInTime()
    {
        LocationFixture fixture;
        Answer one;
        Answer other;
        [[maybe_unused]] const auto unwatchedOne = fixture.ask(one);
        fixture.clock.advance(5s);
        [[maybe_unused]] const auto unwatchedOther = fixture.ask(other);
        // The one who came last starts the time anew, for all.
        fixture.clock.advance(7999ms);
        QVERIFY(!one.came && !other.came);
        fixture.clock.advance(1ms);
        QVERIFY(one.came && !one.location);
        QVERIFY(other.came && !other.location);
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }

    void aLateFixIsIgnored()
    {
        LocationFixture fixture;
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        fixture.clock.advance(8s);
        fixture.deliver({fixture.fixOfAge(0s)});
        QVERIFY(answer.came && !answer.location);
        QVERIFY(fixture.geocoder.questions.isEmpty());
        QVERIFY(!fixture.service->lastFix());
    }

    void afterATimeoutTheSystemIsAskedAgain()
    {
        LocationFixture fixture;
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        fixture.clock.advance(8s);
        Answer again;
        [[maybe_unused]] const auto unwatchedAgain = fixture.ask(again);
        QCOMPARE(fixture.manager.timesLocationAsked, 2);
        QVERIFY(!again.came);
    }

    void theEndOfTheServiceAnswersWhoeverWaits()
    {
        LocationFixture fixture;
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        fixture.service.reset();
        QVERIFY(answer.came && !answer.location);
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }
};

MOORLINE_TEST(LocationServiceTest);

#include "LocationServiceTest.moc"
