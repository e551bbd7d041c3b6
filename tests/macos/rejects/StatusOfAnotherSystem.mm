// rejected: 'kCLAuthorizationStatusAuthorizedWhenInUse' is unavailable
#import <CoreLocation/CoreLocation.h>

bool isAuthorized(CLLocationManager *manager)
{
    return manager.authorizationStatus == kCLAuthorizationStatusAuthorizedWhenInUse;
}
