#import "platform/macos/MacDirectories.h"

#import "platform/macos/Conversions.h"

namespace moorline {

namespace {

/// The user's own; nil where the system gives none.
NSString *folder(NSSearchPathDirectory directory)
{
    return NSSearchPathForDirectoriesInDomains(directory, NSUserDomainMask, YES).firstObject;
}

/// Where the system gives none, it is there in the home.
QString folderOr(NSSearchPathDirectory directory, const QString &inHome)
{
    NSString *given = folder(directory);
    return given ? toQString(given) : toQString(NSHomeDirectory()) + inHome;
}

} // namespace

QString MacDirectories::applicationSupport() const
{
    return toQString(folder(NSApplicationSupportDirectory));
}

QString MacDirectories::downloads() const
{
    return folderOr(NSDownloadsDirectory, QStringLiteral("/Downloads"));
}

QString MacDirectories::trash() const
{
    return folderOr(NSTrashDirectory, QStringLiteral("/.Trash"));
}

} // namespace moorline
