#pragma once

#include "fakes/FakeClock.h"
#include "fakes/FakeLocation.h"
#include "weather/LocationService.h"

namespace moorline::test {

inline const Placemark munich{QStringLiteral("Munich"), QStringLiteral("Munich District"), QStringLiteral("Bavaria"),
    QStringLiteral("Germany"), QStringLiteral("Europe/Berlin")};

/// Where the user is, as a fake system knows it.
struct LocationFixture {
    /// What became of one question for the location.
    struct Answer {
        bool came = false;
        std::optional<WeatherLocation> location;
    };

    explicit LocationFixture(LocationAuthorization authorization = LocationAuthorization::authorized)
    {
        manager.authorization = authorization;
        service = std::make_unique<LocationService>(manager, geocoder, clock);
    }

    QCoro::Task<> ask(Answer &answer, std::function<bool()> isWanted = {})
    {
        answer.location = co_await service->currentLocation(std::chrono::seconds(8), isWanted);
        answer.came = true;
    }

    [[nodiscard]] PositionFix fixOfAge(std::chrono::milliseconds age) const
    {
        return {48.14, 11.58, clock.now().addMSecs(-age.count())};
    }

    void deliver(const QList<PositionFix> &fixes) { Q_EMIT manager.didUpdateLocations(fixes); }

    FakeClock clock;
    FakeLocationManager manager;
    FakeGeocoder geocoder;
    std::unique_ptr<LocationService> service;
};

} // namespace moorline::test
