#import "platform/macos/MacGeocoder.h"

#import "platform/macos/Conversions.h"

#import <CoreLocation/CoreLocation.h>

namespace moorline {

namespace {

Placemark toPlacemark(CLPlacemark *placemark)
{
    return {
        .locality = textFrom(placemark.locality),
        .subAdministrativeArea = textFrom(placemark.subAdministrativeArea),
        .administrativeArea = textFrom(placemark.administrativeArea),
        .country = textFrom(placemark.country),
        .timeZone = textFrom(placemark.timeZone.name),
        // It is the place itself, not the nearest one with a name.
        .distance = std::nullopt,
    };
}

/// There are none at all after an error.
QList<Placemark> toPlacemarks(NSArray<CLPlacemark *> *placemarks)
{
    QList<Placemark> result;
    for (CLPlacemark *placemark in placemarks)
        result.append(toPlacemark(placemark));
    return result;
}

} // namespace

// The main queue keeps what the port promises, whichever thread Core Location answers on and however soon.
void MacGeocoder::reverseGeocode(double latitude, double longitude, Completion completion)
{
    CLLocation *location = [[CLLocation alloc] initWithLatitude:latitude longitude:longitude];
    // A geocoder takes one question at a time, and lives here until it has answered this one.
    __block CLGeocoder *geocoder = [[CLGeocoder alloc] init];
    const std::weak_ptr alive(m_lifetime);
    [geocoder reverseGeocodeLocation:location
                   completionHandler:^(NSArray<CLPlacemark *> *placemarks, NSError *) {
                       dispatch_async(dispatch_get_main_queue(), ^{
                           geocoder = nil;
                           if (!alive.expired())
                               completion(toPlacemarks(placemarks));
                       });
                   }];
}

} // namespace moorline
