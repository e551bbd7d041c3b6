#import "platform/macos/MoorlineLocationDelegate.h"

#import "platform/macos/MacLocationManager.h"

#include <QPointer>

@implementation MoorlineLocationDelegate {
    QPointer<moorline::MacLocationManager> _receiver;
}

- (instancetype)initWithReceiver:(moorline::MacLocationManager *)receiver
{
    self = [super init];
    _receiver = receiver;
    return self;
}

- (void)locationManager:(CLLocationManager *)manager didUpdateLocations:(NSArray<CLLocation *> *)locations
{
    if (_receiver)
        _receiver->receive(locations);
}

- (void)locationManager:(CLLocationManager *)manager didFailWithError:(NSError *)error
{
    if (_receiver)
        Q_EMIT _receiver->didFail();
}

- (void)locationManagerDidChangeAuthorization:(CLLocationManager *)manager
{
    if (_receiver)
        _receiver->receiveAuthorization();
}

@end
