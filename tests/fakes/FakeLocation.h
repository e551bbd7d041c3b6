#pragma once

#include "platform/Geocoder.h"
#include "platform/LocationManager.h"
#include "platform/Network.h"

namespace moorline::test {

/// Changes when it is told to, and tells of it once each time it is listened to.
class FakeNetwork final : public Network {
public:
    [[nodiscard]] bool isReachable() const override { return isUp; }
    void listen() override { isListening = true; }
    [[nodiscard]] bool takeChanges() override { return std::exchange(m_hasChanged, false); }

    void change(bool up)
    {
        isUp = up;
        m_hasChanged = !isListening;
        if (std::exchange(isListening, false))
            Q_EMIT changed();
    }

    bool isUp = true;
    bool isListening = false;

private:
    bool m_hasChanged = false;
};

/// Nobody has been asked for permission until told otherwise, and no fix comes by itself.
class FakeLocationManager final : public LocationManager {
public:
    [[nodiscard]] bool locationServicesEnabled() const override { return isEnabled; }
    [[nodiscard]] LocationAuthorization authorizationStatus() const override { return authorization; }
    [[nodiscard]] std::optional<PositionFix> location() const override { return known; }
    [[nodiscard]] bool asksOnce() const override { return asksOnlyOnce; }
    void setDesiredAccuracy(LocationAccuracy desired) override { accuracy = desired; }
    void requestWhenInUseAuthorization() override { ++timesPermissionAsked; }
    void requestLocation() override { ++timesLocationAsked; }

    void decide(LocationAuthorization decision)
    {
        authorization = decision;
        Q_EMIT didChangeAuthorization();
    }

    bool isEnabled = true;
    LocationAuthorization authorization = LocationAuthorization::notDetermined;
    bool asksOnlyOnce = true;
    std::optional<LocationAccuracy> accuracy;
    std::optional<PositionFix> known;
    int timesPermissionAsked = 0;
    int timesLocationAsked = 0;
};

/// Answers when told to.
class FakeGeocoder final : public Geocoder {
public:
    struct Question {
        double latitude;
        double longitude;
        Completion completion;
    };

    void reverseGeocode(double latitude, double longitude, Completion completion) override
    {
        questions.append({latitude, longitude, std::move(completion)});
    }

    /// Answers the oldest question. False when there is none.
    bool answer(const QList<Placemark> &placemarks)
    {
        if (questions.isEmpty())
            return false;
        const Question question = questions.takeFirst();
        question.completion(placemarks);
        return true;
    }

    QList<Question> questions;
};

} // namespace moorline::test
