#pragma once

#include "Replies.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeHttpClient.h"
#include "fakes/FakeLocation.h"
#include "fakes/SettingsGround.h"
#include "weather/LocationService.h"
#include "weather/WeatherService.h"

namespace moorline::test {

/// The weather with all it is built on, faked. The location service is refused until told otherwise.
struct WeatherFixture {
    static WeatherEndpoints endpoints()
    {
        return {QUrl(QStringLiteral("https://forecast.example/v1/forecast")),
            QUrl(QStringLiteral("https://geocoding.example/v1/search")), QUrl(QStringLiteral("https://ipwho.example/")),
            QUrl(QStringLiteral("https://ipapi.example/json/")), true};
    }

    explicit WeatherFixture(bool debug = false)
        : service(std::make_unique<WeatherService>(
            WeatherService::Context{store, clock, client, location, network, endpoints(), debug}))
    {
        manager.authorization = LocationAuthorization::denied;
        // As if the program had started only now.
        Q_EMIT manager.didChangeAuthorization();
    }

    /// Changes the settings through the store, as every view does.
    template <typename Change>
    void change(Change apply)
    {
        store.change(apply);
    }

    void chooseCity()
    {
        change([](Settings &settings) { settings.useCurrentLocation = false; });
    }
    void chooseCity(const QString &name, double latitude)
    {
        change([&](Settings &settings) {
            settings.useCurrentLocation = false;
            settings.location.name = name;
            settings.location.latitude = latitude;
        });
    }

    /// Answers the forecast request that is under way, which there has to be.
    bool answerForecast(const QJsonObject &reply = replies::forecast())
    {
        return isAskedFor(QStringLiteral("forecast.example")) && client.answerJson(replies::bytes(reply));
    }
    bool answerIPWho(const QJsonObject &reply = replies::ipWho())
    {
        return isAskedFor(QStringLiteral("ipwho.example")) && client.answerJson(replies::bytes(reply));
    }
    bool answerIPAPI(const QJsonObject &reply = replies::ipAPI())
    {
        return isAskedFor(QStringLiteral("ipapi.example")) && client.answerJson(replies::bytes(reply));
    }

    /// Whose weather there is; empty for none.
    [[nodiscard]] QString placeOfTheWeather() const
    {
        return service->snapshot() ? service->snapshot()->place.name : QString();
    }

    /// Whether the request under way goes to that server.
    [[nodiscard]] bool isAskedFor(const QString &host) const { return client.next().host() == host; }

    FakeClock clock;
    FakeHttpClient client;
    FakeLocationManager manager;
    FakeGeocoder geocoder;
    FakeNetwork network;
    SettingsGround ground;
    SettingsStore store{ground.context(clock)};
    LocationService location{manager, geocoder, clock};
    std::unique_ptr<WeatherService> service;
};

} // namespace moorline::test
