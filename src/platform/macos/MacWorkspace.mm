#import "platform/macos/MacWorkspace.h"

#import <AppKit/AppKit.h>

namespace moorline {

namespace {

/// The workspace posts its notifications in a center of its own, never in the default one.
NSNotificationCenter *center()
{
    return NSWorkspace.sharedWorkspace.notificationCenter;
}

} // namespace

MacWorkspace::MacWorkspace()
    : m_spaceObserver(center(), NSWorkspaceActiveSpaceDidChangeNotification, [this] { Q_EMIT activeSpaceChanged(); })
    , m_activationObserver(
          center(), NSWorkspaceDidActivateApplicationNotification, [this] { Q_EMIT applicationActivated(); })
{
}

} // namespace moorline
