#include "LocationFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;
using Answer = LocationFixture::Answer;

namespace {

/// The location that one placemark, or none, makes of a fresh fix.
WeatherLocation described(const QList<Placemark> &placemarks)
{
    LocationFixture fixture;
    fixture.manager.known = fixture.fixOfAge(0s);
    Answer answer;
    [[maybe_unused]] const auto unwatched = fixture.ask(answer);
    fixture.geocoder.answer(placemarks);
    return answer.location.value_or(WeatherLocation());
}

} // namespace

class LocationNamesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aPlaceTakesAllFromItsPlacemark()
    {
        const WeatherLocation expected{QStringLiteral("Munich"), QStringLiteral("Bavaria"), QStringLiteral("Germany"),
            48.14, 11.58, QStringLiteral("Europe/Berlin")};
        QCOMPARE(described({munich}), expected);
    }

    void onlyTheFirstPlacemarkCounts()
    {
        Placemark other;
        other.locality = QStringLiteral("Elsewhere");
        QCOMPARE(described({munich, other}).name, QStringLiteral("Munich"));
    }

    void aPlaceWithoutATownIsNamedAfterItsCounty()
    {
        Placemark place = munich;
        place.locality.reset();
        QCOMPARE(described({place}).name, QStringLiteral("Munich District"));
        place.subAdministrativeArea.reset();
        QCOMPARE(described({place}).name, QStringLiteral("Bavaria"));
        place.administrativeArea.reset();
        QCOMPARE(described({place}).name, QStringLiteral("Current location"));
        QCOMPARE(described({place}).country, QStringLiteral("Germany"));
    }

    void aPlaceWithoutAZoneIsInTheSystemsZone()
    {
        Placemark place = munich;
        place.timeZone.reset();
        QCOMPARE(described({place}).timezone, QStringLiteral("UTC"));
    }

    void aPlaceThatNobodyKnowsIsTheCurrentLocation()
    {
        const WeatherLocation expected{
            QStringLiteral("Current location"), std::nullopt, std::nullopt, 48.14, 11.58, QStringLiteral("UTC")};
        QCOMPARE(described({}), expected);
    }

    void aTownFarAwayNamesNoPlace_data()
    {
        QTest::addColumn<double>("distance");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("zone");
        QTest::newRow("here") << 0.0 << QStringLiteral("Munich") << QStringLiteral("Europe/Berlin");
        QTest::newRow("near enough") << 100.0 << QStringLiteral("Munich") << QStringLiteral("Europe/Berlin");
        QTest::newRow("too far") << 100.1 << QStringLiteral("Current location") << QStringLiteral("UTC");
    }
    void aTownFarAwayNamesNoPlace()
    {
        QFETCH(const double, distance);
        Placemark place = munich;
        place.distance = distance;
        QTEST(described({place}).name, "name");
        QFETCH(const QString, zone);
        QCOMPARE(described({place}).timezone, zone);
    }

    void aSilentGeocoderLeavesThePlaceUnnamed()
    {
        LocationFixture fixture;
        fixture.manager.known = fixture.fixOfAge(0s);
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        fixture.clock.advance(LocationService::namingLimit - 1ms);
        QVERIFY(!answer.came);
        fixture.clock.advance(1ms);
        QCOMPARE(answer.location->name, QStringLiteral("Current location"));
        QVERIFY(fixture.geocoder.answer({munich}));
        QCOMPARE(answer.location->name, QStringLiteral("Current location"));
    }

    void theLastFixIsAnnouncedOnlyWhenItChanges()
    {
        LocationFixture fixture;
        QSignalSpy changed(fixture.service.get(), &LocationService::lastFixChanged);
        fixture.manager.known = fixture.fixOfAge(0s);
        for (int i = 0; i < 2; ++i) {
            Answer answer;
            [[maybe_unused]] const auto unwatched = fixture.ask(answer);
            QVERIFY(fixture.geocoder.answer({munich}));
            QCOMPARE(fixture.service->lastFix(), answer.location);
        }
        QCOMPARE(changed.size(), 1);
    }

    void theEndOfTheServiceWhileAPlaceIsNamedIsNoHarm()
    {
        LocationFixture fixture;
        fixture.manager.known = fixture.fixOfAge(0s);
        Answer answer;
        [[maybe_unused]] const auto unwatched = fixture.ask(answer);
        fixture.service.reset();
        QVERIFY(fixture.geocoder.answer({munich}));
        QCOMPARE(answer.location->name, QStringLiteral("Munich"));
    }
};

MOORLINE_TEST(LocationNamesTest);

#include "LocationNamesTest.moc"
