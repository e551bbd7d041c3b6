#import "platform/macos/MacLocationManager.h"

#import "platform/macos/Conversions.h"
#import "platform/macos/MoorlineLocationDelegate.h"

#include <QPointer>

namespace moorline {

namespace {

LocationAuthorization toLocationAuthorization(CLAuthorizationStatus status)
{
    switch (status) {
    case kCLAuthorizationStatusNotDetermined:
        return LocationAuthorization::notDetermined;
    case kCLAuthorizationStatusRestricted:
        return LocationAuthorization::restricted;
    case kCLAuthorizationStatusDenied:
        return LocationAuthorization::denied;
    case kCLAuthorizationStatusAuthorizedAlways:
        return LocationAuthorization::authorized;
    }
    return LocationAuthorization::unknown;
}

CLLocationAccuracy toCLLocationAccuracy(LocationAccuracy accuracy)
{
    switch (accuracy) {
    case LocationAccuracy::town:
        return kCLLocationAccuracyKilometer;
    case LocationAccuracy::exact:
        return kCLLocationAccuracyBest;
    }
    Q_UNREACHABLE();
}

std::optional<PositionFix> toPositionFix(CLLocation *location)
{
    if (!location || !CLLocationCoordinate2DIsValid(location.coordinate))
        return std::nullopt;
    return PositionFix{
        .latitude = location.coordinate.latitude,
        .longitude = location.coordinate.longitude,
        .timestamp = toQDateTime(location.timestamp),
    };
}

} // namespace

MacLocationManager::MacLocationManager()
    : m_manager([[CLLocationManager alloc] init])
    , m_delegate([[MoorlineLocationDelegate alloc] initWithReceiver:this])
    , m_questions(dispatch_queue_create("app.moorline.location", DISPATCH_QUEUE_SERIAL))
{
    m_manager.delegate = m_delegate;
}

MacLocationManager::~MacLocationManager()
{
    m_manager.delegate = nil;
}

bool MacLocationManager::locationServicesEnabled() const
{
    return m_servicesEnabled;
}

LocationAuthorization MacLocationManager::authorizationStatus() const
{
    return toLocationAuthorization(m_manager.authorizationStatus);
}

std::optional<PositionFix> MacLocationManager::location() const
{
    return toPositionFix(m_manager.location);
}

void MacLocationManager::setDesiredAccuracy(LocationAccuracy accuracy)
{
    m_manager.desiredAccuracy = toCLLocationAccuracy(accuracy);
}

void MacLocationManager::requestWhenInUseAuthorization()
{
    [m_manager requestWhenInUseAuthorization];
}

void MacLocationManager::requestLocation()
{
    [m_manager requestLocation];
}

void MacLocationManager::receive(NSArray<CLLocation *> *locations)
{
    QList<PositionFix> fixes;
    for (CLLocation *location in locations) {
        if (const auto fix = toPositionFix(location))
            fixes.append(*fix);
    }
    Q_EMIT didUpdateLocations(fixes);
}

// Asking whether the service is on may block, so another thread does. The system reports the initial state and each
// turn of the switch, so nothing is missed by asking at a report, which is passed on when the answer is there.
void MacLocationManager::receiveAuthorization()
{
    const QPointer<MacLocationManager> alive(this);
    dispatch_async(m_questions, ^{
        const bool enabled = [CLLocationManager locationServicesEnabled];
        dispatch_async(dispatch_get_main_queue(), ^{
            if (alive)
                alive->setServicesEnabled(enabled);
        });
    });
}

void MacLocationManager::setServicesEnabled(bool enabled)
{
    m_servicesEnabled = enabled;
    Q_EMIT didChangeAuthorization();
}

} // namespace moorline
