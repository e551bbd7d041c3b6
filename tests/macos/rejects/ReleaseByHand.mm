// rejected: ARC forbids explicit message send of 'release'
#import <Foundation/Foundation.h>

@interface NSObject (ByHand)
- (void)release;
@end

void drop(NSObject *object)
{
    [object release];
}
