// rejected: enumeration value 'kCLAuthorizationStatusRestricted' not handled in switch
#import <CoreLocation/CoreLocation.h>

bool isRefused(CLLocationManager *manager)
{
    switch (manager.authorizationStatus) {
    case kCLAuthorizationStatusDenied:
        return true;
    case kCLAuthorizationStatusNotDetermined:
    case kCLAuthorizationStatusAuthorizedAlways:
        return false;
    }
    return true;
}
