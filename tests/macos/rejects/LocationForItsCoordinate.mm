// rejected: no known conversion from 'CLLocation *__strong' to 'CLLocationCoordinate2D'
#import <CoreLocation/CoreLocation.h>

bool isSomewhere(CLLocation *location)
{
    return CLLocationCoordinate2DIsValid(location);
}
