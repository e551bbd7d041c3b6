#import "platform/macos/MacWindowServer.h"

#include "platform/DisplaySpaces.h"
#import "platform/macos/CFPointer.h"
#import "platform/macos/Conversions.h"

#import <AppKit/AppKit.h>
#import <ColorSync/ColorSync.h>
#import <CoreGraphics/CoreGraphics.h>

namespace moorline {

namespace {

std::optional<qlonglong> integerFrom(id object)
{
    const QVariant value = variantFrom(object);
    if (value.typeId() != QMetaType::LongLong)
        return std::nullopt;
    return value.toLongLong();
}

std::optional<int> layerFrom(id object)
{
    const auto number = integerFrom(object);
    return number ? std::optional(int(*number)) : std::nullopt;
}

std::optional<WindowId> idFrom(id object)
{
    const auto number = integerFrom(object);
    return number ? std::optional(WindowId(*number)) : std::nullopt;
}

std::optional<QRectF> boundsFrom(id object)
{
    CGRect bounds = CGRectZero;
    if (![object isKindOfClass:[NSDictionary class]]
        || !CGRectMakeWithDictionaryRepresentation((__bridge CFDictionaryRef)object, &bounds))
        return std::nullopt;
    return toQRectF(bounds);
}

WindowDescription describe(NSDictionary *window)
{
    return {
        .ownerName = textFrom(window[(__bridge NSString *)kCGWindowOwnerName]),
        .ownerProcess = integerFrom(window[(__bridge NSString *)kCGWindowOwnerPID]),
        .layer = layerFrom(window[(__bridge NSString *)kCGWindowLayer]),
        .bounds = boundsFrom(window[(__bridge NSString *)kCGWindowBounds]),
        .id = idFrom(window[(__bridge NSString *)kCGWindowNumber]),
    };
}

CGWindowLevelKey keyOf(WindowLevel level)
{
    switch (level) {
    case WindowLevel::dock:
        return kCGDockWindowLevelKey;
    case WindowLevel::mainMenu:
        return kCGMainMenuWindowLevelKey;
    }
    Q_UNREACHABLE();
}

NSNotificationCenter *center()
{
    return NSWorkspace.sharedWorkspace.notificationCenter;
}

} // namespace

MacWindowServer::MacWindowServer()
    : m_hideObserver(center(), NSWorkspaceDidHideApplicationNotification, [this] { Q_EMIT windowsChanged(); })
    , m_unhideObserver(center(), NSWorkspaceDidUnhideApplicationNotification, [this] { Q_EMIT windowsChanged(); })
    , m_terminationObserver(
          center(), NSWorkspaceDidTerminateApplicationNotification, [this] { Q_EMIT windowsChanged(); })
{
}

std::optional<QList<WindowDescription>> MacWindowServer::onScreenWindows() const
{
    const CGWindowListOption options = kCGWindowListOptionOnScreenOnly | kCGWindowListExcludeDesktopElements;
    NSArray *windows = (__bridge_transfer NSArray *)CGWindowListCopyWindowInfo(options, kCGNullWindowID);
    if (!windows)
        return std::nullopt;
    QList<WindowDescription> result;
    for (NSDictionary *window in windows)
        result.append(describe(window));
    return result;
}

int MacWindowServer::level(WindowLevel level) const
{
    return CGWindowLevelForKey(keyOf(level));
}

std::optional<QList<DisplaySpace>> MacWindowServer::managedDisplaySpaces() const
{
    const auto displays = m_skyLight.managedDisplaySpaces();
    return displays ? std::optional(displaySpacesFrom(*displays)) : std::nullopt;
}

std::optional<QString> MacWindowServer::mainDisplayUUID() const
{
    const CFPointer<CFUUIDRef> uuid(CGDisplayCreateUUIDFromDisplayID(CGMainDisplayID()));
    if (!uuid)
        return std::nullopt;
    return toQString((__bridge_transfer NSString *)CFUUIDCreateString(kCFAllocatorDefault, uuid.get()));
}

} // namespace moorline
