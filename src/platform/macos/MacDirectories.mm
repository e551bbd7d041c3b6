#import "platform/macos/MacDirectories.h"

#import "platform/macos/Conversions.h"

namespace moorline {

QString MacDirectories::applicationSupport() const
{
    NSArray<NSString *> *paths =
        NSSearchPathForDirectoriesInDomains(NSApplicationSupportDirectory, NSUserDomainMask, YES);
    return toQString(paths.firstObject);
}

} // namespace moorline
