#import "platform/macos/MacUserDefaults.h"

#import "platform/macos/Conversions.h"

namespace moorline {

QStringList MacUserDefaults::stringList(const QString &key) const
{
    return toQStringList([NSUserDefaults.standardUserDefaults stringArrayForKey:toNSString(key)]);
}

void MacUserDefaults::setStringList(const QString &key, const QStringList &list)
{
    [NSUserDefaults.standardUserDefaults setObject:toNSArray(list) forKey:toNSString(key)];
}

} // namespace moorline
