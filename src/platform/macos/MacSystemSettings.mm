#import "platform/macos/MacSystemSettings.h"

#import <AppKit/AppKit.h>

#include <QtGlobal>

namespace moorline {

namespace {

NSString *addressOf(SettingsPane pane)
{
    switch (pane) {
    case SettingsPane::desktopAndDock:
        return @"x-apple.systempreferences:com.apple.Desktop-Settings.extension";
    case SettingsPane::locationServices:
        return @"x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension?Privacy_LocationServices";
    }
    Q_UNREACHABLE();
}

} // namespace

void MacSystemSettings::open(SettingsPane pane)
{
    [NSWorkspace.sharedWorkspace openURL:[NSURL URLWithString:addressOf(pane)]];
}

} // namespace moorline
