#import "platform/macos/MacFiles.h"

#import "platform/macos/Conversions.h"

namespace moorline {

QString MacFiles::displayName(const QString &path) const
{
    return toQString([NSFileManager.defaultManager displayNameAtPath:toNSString(path)]);
}

bool MacFiles::exists(const QString &path) const
{
    return [NSFileManager.defaultManager fileExistsAtPath:toNSString(path)];
}

} // namespace moorline
