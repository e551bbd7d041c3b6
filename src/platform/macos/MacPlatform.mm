#include "platform/Platform.h"
#import "platform/macos/CFPointer.h"
#import "platform/macos/MacAccessibility.h"
#import "platform/macos/MacAppBundles.h"
#import "platform/macos/MacDirectories.h"
#import "platform/macos/MacFiles.h"
#import "platform/macos/MacGeocoder.h"
#import "platform/macos/MacIcons.h"
#import "platform/macos/MacLocationManager.h"
#import "platform/macos/MacNetwork.h"
#import "platform/macos/MacPanelWindow.h"
#import "platform/macos/MacPointer.h"
#import "platform/macos/MacPopupWindows.h"
#import "platform/macos/MacPower.h"
#import "platform/macos/MacPreferences.h"
#import "platform/macos/MacScreens.h"
#import "platform/macos/MacStatusBar.h"
#import "platform/macos/MacSymbolCatalogue.h"
#import "platform/macos/MacSystemSettings.h"
#import "platform/macos/MacUserDefaults.h"
#import "platform/macos/MacWindowServer.h"
#import "platform/macos/MacWorkspace.h"
#include "platform/qt/LockFileClaim.h"
#include "platform/qt/NullAdapters.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtFileWatch.h"
#include "platform/qt/QtHttpClient.h"
#include "platform/qt/QtPictures.h"

#include <QGuiApplication>

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

/// What is made of windows needs those of AppKit, which no other platform of Qt has.
bool hasWindows()
{
    return QGuiApplication::platformName() == QLatin1StringView("cocoa");
}

Port<Pointer> makePointer()
{
    if (hasWindows())
        return makePort<MacPointer>();
    return makePort<NullPointer>();
}

Port<PanelWindow> makePanelWindow()
{
    if (hasWindows())
        return makePort<MacPanelWindow>();
    return makePort<NullPanelWindow>();
}

Port<PopupWindows> makePopupWindows()
{
    if (hasWindows())
        return makePort<MacPopupWindows>();
    return makePort<NullPopupWindows>();
}

Port<StatusBar> makeStatusBar()
{
    if (hasWindows())
        return makePort<MacStatusBar>();
    return makePort<NullStatusBar>();
}

} // namespace

std::optional<Preparation> preparePlatform(DisplayNeed need)
{
    // Else Qt makes the program a foreground application when it starts, and activates it over the one in use.
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
    if (qEnvironmentVariableIsSet(qtPlatform) || hasWindowServer())
        return Preparation();
    if (need == DisplayNeed::required || !qputenv(qtPlatform, "offscreen"))
        return std::nullopt;
    return Preparation();
}

/// Launch Services gives every application its own environment.
Platform createPlatform([[maybe_unused]] const Preparation &preparation)
{
    // Neither an icon in the Dock nor a menu bar, also for a program that runs outside its bundle.
    [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];

    auto ownedClock = makePort<QtClock>();
    QtClock &clock = *ownedClock;
    auto appBundles = makePort<MacAppBundles>();
    auto ownedFileWatch = makePort<QtFileWatch>();
    auto icons = makePort<MacIcons>(*ownedFileWatch);
    // One that came has an icon, and one that was replaced may have another.
    QObject::connect(appBundles.get(), &AppBundles::changed, icons.get(), &Icons::themeChanged);
    return {
        .clock = std::move(ownedClock),
        .screens = makePort<MacScreens>(),
        .pointer = makePointer(),
        .panelWindow = makePanelWindow(),
        .popupWindows = makePopupWindows(),
        .windowServer = makePort<MacWindowServer>(),
        .workspace = makePort<MacWorkspace>(),
        .power = makePort<MacPower>(),
        .statusBar = makeStatusBar(),
        .preferences = makePort<MacPreferences>(),
        .accessibility = makePort<MacAccessibility>(),
        .systemSettings = makePort<MacSystemSettings>(),
        .instanceClaim =
            makePort<LockFileClaim>(MacDirectories().applicationSupport() + u'/' + QGuiApplication::desktopFileName()),
        .directories = makePort<MacDirectories>(),
        .userDefaults = makePort<MacUserDefaults>(),
        .files = makePort<MacFiles>(),
        .fileWatch = std::move(ownedFileWatch),
        .httpClient = makePort<QtHttpClient>(clock),
        .network = makePort<MacNetwork>(),
        .locationManager = makePort<MacLocationManager>(),
        .geocoder = makePort<MacGeocoder>(),
        .appBundles = std::move(appBundles),
        .symbolCatalogue = makePort<MacSymbolCatalogue>(),
        .icons = std::move(icons),
        .pictures = makePort<QtPictures>(),
        .systemFont = makePort<OwnSystemFont>(),
    };
}

} // namespace moorline
