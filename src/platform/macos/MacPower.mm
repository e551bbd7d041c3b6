#import "platform/macos/MacPower.h"

#import <AppKit/AppKit.h>

namespace moorline {

MacPower::MacPower()
    : m_wakeObserver(
        NSWorkspace.sharedWorkspace.notificationCenter, NSWorkspaceDidWakeNotification, [this] { Q_EMIT didWake(); })
{
}

} // namespace moorline
