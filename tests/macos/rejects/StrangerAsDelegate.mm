// rejected: incompatible pointer types assigning to 'id<CLLocationManagerDelegate>' from 'MoorlinePanel *'
#import "platform/macos/MoorlinePanel.h"

#import <CoreLocation/CoreLocation.h>

void report(CLLocationManager *manager, MoorlinePanel *panel)
{
    manager.delegate = panel;
}
