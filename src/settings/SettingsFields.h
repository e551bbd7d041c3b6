#pragma once

#include "settings/Settings.h"

namespace moorline {

/// Calls `visit` with the key in the settings file and the member of every setting, in the order of the record.
template <typename Visit>
void forEachSetting(Visit visit)
{
    visit("visibilityMode", &Settings::visibilityMode);
    visit("temperatureUnit", &Settings::temperatureUnit);
    visit("clockFormat", &Settings::clockFormat);
    visit("showSeconds", &Settings::showSeconds);
    visit("musicStyle", &Settings::musicStyle);
    visit("hideMusicWhenIdle", &Settings::hideMusicWhenIdle);
    visit("musicIdleTimeoutMinutes", &Settings::musicIdleTimeoutMinutes);
    visit("recentAppCount", &Settings::recentAppCount);
    visit("recentAppsMode", &Settings::recentAppsMode);
    visit("hideRecentAppsAlreadyPinned", &Settings::hideRecentAppsAlreadyPinned);
    visit("showAppBadges", &Settings::showAppBadges);
    visit("reserveScreenSpace", &Settings::reserveScreenSpace);
    visit("pinnedItems", &Settings::pinnedItems);
    visit("showDownloadsFolder", &Settings::showDownloadsFolder);
    visit("showTrash", &Settings::showTrash);
    visit("pinnedItemsIntroduced", &Settings::pinnedItemsIntroduced);
    visit("enabledWidgets", &Settings::enabledWidgets);
    visit("highlightColorHex", &Settings::highlightColorHex);
    visit("appShortcuts", &Settings::appShortcuts);
    visit("location", &Settings::location);
    visit("useCurrentLocation", &Settings::useCurrentLocation);
    visit("launchAtLogin", &Settings::launchAtLogin);
    visit("showOverFullScreenApps", &Settings::showOverFullScreenApps);
    visit("showAutoHideNudge", &Settings::showAutoHideNudge);
    visit("hideDelaySeconds", &Settings::hideDelaySeconds);
    visit("bottomGap", &Settings::bottomGap);
}

} // namespace moorline
