#include "platform/Platform.h"
#import "platform/macos/CFPointer.h"
#import "platform/macos/MacAppBundles.h"
#import "platform/macos/MacDirectories.h"
#import "platform/macos/MacGeocoder.h"
#import "platform/macos/MacLocationManager.h"
#import "platform/macos/MacNetwork.h"
#import "platform/macos/MacPanelWindow.h"
#import "platform/macos/MacPointer.h"
#import "platform/macos/MacPower.h"
#import "platform/macos/MacPreferences.h"
#import "platform/macos/MacScreens.h"
#import "platform/macos/MacSystemImages.h"
#import "platform/macos/MacSystemSettings.h"
#import "platform/macos/MacWindowServer.h"
#import "platform/macos/MacWorkspace.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtHttpClient.h"

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

namespace moorline {

namespace {

constexpr auto qtPlatform = "QT_QPA_PLATFORM";

/// False in a remote shell, and for a user who is not logged in at the screen.
bool hasWindowServer()
{
    return CFPointer<CFDictionaryRef>(CGSessionCopyCurrentDictionary()) != nullptr;
}

} // namespace

bool preparePlatform(DisplayNeed need)
{
    if (qEnvironmentVariableIsSet(qtPlatform) || hasWindowServer())
        return true;
    if (need == DisplayNeed::required)
        return false;
    return qputenv(qtPlatform, "offscreen");
}

std::unique_ptr<Platform> createPlatform()
{
    // Neither an icon in the Dock nor a menu bar, also for a program that runs outside its bundle.
    [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];

    auto platform = std::make_unique<Platform>();
    platform->clock = std::make_unique<QtClock>();
    platform->screens = std::make_unique<MacScreens>();
    platform->pointer = std::make_unique<MacPointer>();
    platform->panelWindow = std::make_unique<MacPanelWindow>();
    platform->windowServer = std::make_unique<MacWindowServer>();
    platform->workspace = std::make_unique<MacWorkspace>();
    platform->power = std::make_unique<MacPower>();
    platform->statusBar = std::make_unique<StatusBar>();
    platform->preferences = std::make_unique<MacPreferences>();
    platform->systemSettings = std::make_unique<MacSystemSettings>();
    platform->directories = std::make_unique<MacDirectories>();
    platform->httpClient = std::make_unique<QtHttpClient>(*platform->clock);
    platform->network = std::make_unique<MacNetwork>();
    platform->locationManager = std::make_unique<MacLocationManager>();
    platform->geocoder = std::make_unique<MacGeocoder>();
    platform->appBundles = std::make_unique<MacAppBundles>();
    platform->systemImages = std::make_unique<MacSystemImages>();
    return platform;
}

} // namespace moorline
