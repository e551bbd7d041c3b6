#pragma once

#include <Foundation/Foundation.h>

@class CLLocationManager;

// Positions

// https://developer.apple.com/documentation/corelocation/cllocationdegrees
typedef double CLLocationDegrees;
// https://developer.apple.com/documentation/corelocation/cllocationaccuracy
typedef double CLLocationAccuracy;
// https://developer.apple.com/documentation/corelocation/kcllocationaccuracykilometer
extern "C" const CLLocationAccuracy kCLLocationAccuracyKilometer;
// https://developer.apple.com/documentation/corelocation/kcllocationaccuracybest
extern "C" const CLLocationAccuracy kCLLocationAccuracyBest;

// https://developer.apple.com/documentation/corelocation/cllocationcoordinate2d
struct CLLocationCoordinate2D {
    CLLocationDegrees latitude;
    CLLocationDegrees longitude;
};

// https://developer.apple.com/documentation/corelocation/cllocationcoordinate2disvalid(_:)
extern "C" BOOL CLLocationCoordinate2DIsValid(CLLocationCoordinate2D coord);

// https://developer.apple.com/documentation/corelocation/cllocation
@interface CLLocation : NSObject
@property (readonly) CLLocationCoordinate2D coordinate;
@property (readonly, copy) NSDate *timestamp;
// https://developer.apple.com/documentation/corelocation/cllocation/init(latitude:longitude:)
- (instancetype)initWithLatitude:(CLLocationDegrees)latitude longitude:(CLLocationDegrees)longitude;
@end

// Location services

// https://developer.apple.com/documentation/corelocation/clauthorizationstatus
enum CLAuthorizationStatus : int {
    kCLAuthorizationStatusNotDetermined = 0,
    kCLAuthorizationStatusRestricted,
    kCLAuthorizationStatusDenied,
    kCLAuthorizationStatusAuthorizedAlways,
    // https://developer.apple.com/documentation/corelocation/clauthorizationstatus/authorizedwheninuse
    // Not on macOS.
    kCLAuthorizationStatusAuthorizedWhenInUse NS_UNAVAILABLE,
};

// https://developer.apple.com/documentation/corelocation/cllocationmanagerdelegate
@protocol CLLocationManagerDelegate <NSObject>
@optional
// https://developer.apple.com/documentation/corelocation/cllocationmanagerdelegate/locationmanager(_:didupdatelocations:)
- (void)locationManager:(CLLocationManager *)manager didUpdateLocations:(NSArray<CLLocation *> *)locations;
// https://developer.apple.com/documentation/corelocation/cllocationmanagerdelegate/locationmanager(_:didfailwitherror:)
- (void)locationManager:(CLLocationManager *)manager didFailWithError:(NSError *)error;
// https://developer.apple.com/documentation/corelocation/cllocationmanagerdelegate/locationmanagerdidchangeauthorization(_:)
- (void)locationManagerDidChangeAuthorization:(CLLocationManager *)manager API_AVAILABLE(macos(11.0));
@end

// https://developer.apple.com/documentation/corelocation/cllocationmanager
@interface CLLocationManager : NSObject
// https://developer.apple.com/documentation/corelocation/cllocationmanager/delegate
@property (weak) id<CLLocationManagerDelegate> delegate;
// https://developer.apple.com/documentation/corelocation/cllocationmanager/desiredaccuracy
@property CLLocationAccuracy desiredAccuracy;
// https://developer.apple.com/documentation/corelocation/cllocationmanager/authorizationstatus-swift.property
@property (readonly) CLAuthorizationStatus authorizationStatus API_AVAILABLE(macos(11.0));
// https://developer.apple.com/documentation/corelocation/cllocationmanager/location
// Nil before there ever was one.
@property (readonly, copy) CLLocation *location;
// https://developer.apple.com/documentation/corelocation/cllocationmanager/locationservicesenabled()
+ (BOOL)locationServicesEnabled;
// https://developer.apple.com/documentation/corelocation/cllocationmanager/requestwheninuseauthorization()
- (void)requestWhenInUseAuthorization API_AVAILABLE(macos(10.15));
// https://developer.apple.com/documentation/corelocation/cllocationmanager/requestlocation()
- (void)requestLocation API_AVAILABLE(macos(10.14));
@end

// Names for positions

// https://developer.apple.com/documentation/corelocation/clplacemark
@interface CLPlacemark : NSObject
@property (readonly, copy) NSString *locality;
// https://developer.apple.com/documentation/corelocation/clplacemark/subadministrativearea
@property (readonly, copy) NSString *subAdministrativeArea;
@property (readonly, copy) NSString *administrativeArea;
@property (readonly, copy) NSString *country;
// https://developer.apple.com/documentation/corelocation/clplacemark/timezone
@property (readonly, copy) NSTimeZone *timeZone;
@end

// https://developer.apple.com/documentation/corelocation/clgeocodecompletionhandler
// Without placemarks when the request failed or was cancelled.
typedef void (^CLGeocodeCompletionHandler)(NSArray<CLPlacemark *> *placemarks, NSError *error);

// https://developer.apple.com/documentation/corelocation/clgeocoder
// What takes its place is not there before macOS 26.
API_DEPRECATED("Use MapKit", macos(10.8, 26.0))
@interface CLGeocoder : NSObject
// https://developer.apple.com/documentation/corelocation/clgeocoder/reversegeocodelocation(_:completionhandler:)
- (void)reverseGeocodeLocation:(CLLocation *)location
             completionHandler:(CLGeocodeCompletionHandler)completionHandler
    API_DEPRECATED("Use MKReverseGeocodingRequest", macos(10.8, 26.0));
@end
