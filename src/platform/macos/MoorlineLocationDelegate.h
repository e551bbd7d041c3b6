#pragma once

#import <CoreLocation/CoreLocation.h>

namespace moorline {
class MacLocationManager;
}

/// Passes on what Core Location reports. A report that comes after the receiver is gone ends here.
@interface MoorlineLocationDelegate : NSObject <CLLocationManagerDelegate>
- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithReceiver:(moorline::MacLocationManager *)receiver NS_DESIGNATED_INITIALIZER;
@end
