#pragma once

#include "settings/WidgetKind.h"

#include <QList>
#include <QString>
#include <optional>

namespace moorline {

/// How the panel reacts to the desktop's own dock.
enum class DockVisibilityMode { alwaysVisible, hideWhenSystemDockAppears };
enum class TemperatureUnit { celsius, fahrenheit };
enum class ClockFormat { twelveHour, twentyFourHour };
enum class MusicStyle { player, compact };
/// Which applications count as recent.
enum class RecentAppsMode { runningOnly, anyState };

/// A pinned file or folder, identified by its path.
struct PinnedItem {
    QString path;
    QString name;

    [[nodiscard]] const QString &id() const { return path; }
    bool operator==(const PinnedItem &) const = default;
};

/// A pinned application.
struct AppShortcut {
    QString path;
    std::optional<QString> bundleIdentifier;
    QString name;

    /// Two shortcuts with the same id are the same shortcut: the bundle identifier, or the path where there is none.
    [[nodiscard]] QString id() const { return bundleIdentifier.value_or(path); }
    bool operator==(const AppShortcut &) const = default;
};

/// A place for the weather.
struct WeatherLocation {
    QString name;
    /// State or region.
    std::optional<QString> admin1;
    std::optional<QString> country;
    /// In degrees.
    double latitude = 0;
    double longitude = 0;
    /// An IANA zone name.
    std::optional<QString> timezone;

    /// Region and country, as far as they are known, joined by a comma.
    [[nodiscard]] QString subtitle() const;
    bool operator==(const WeatherLocation &) const = default;
};

/// 12 or 24 hours, as the user's locale writes the time of day.
[[nodiscard]] ClockFormat systemClockFormat();
/// All but the counter of the year.
[[nodiscard]] const QList<WidgetKind> &defaultWidgets();
/// Just the file manager.
[[nodiscard]] const QList<AppShortcut> &defaultShortcuts();

/// Every choice of the user. A plain value.
struct Settings {
    DockVisibilityMode visibilityMode = DockVisibilityMode::alwaysVisible;
    TemperatureUnit temperatureUnit = TemperatureUnit::fahrenheit;
    ClockFormat clockFormat = systemClockFormat();
    bool showSeconds = false;
    MusicStyle musicStyle = MusicStyle::player;
    bool hideMusicWhenIdle = true;
    qint64 musicIdleTimeoutMinutes = 5;
    qint64 recentAppCount = 3;
    RecentAppsMode recentAppsMode = RecentAppsMode::runningOnly;
    bool hideRecentAppsAlreadyPinned = true;
    bool showAppBadges = false;
    bool reserveScreenSpace = false;
    QList<PinnedItem> pinnedItems;
    bool showDownloadsFolder = true;
    bool showTrash = true;
    /// Set once the pinned-items widget has been added to a settings file that predates it.
    bool pinnedItemsIntroduced = false;
    /// Left to right.
    QList<WidgetKind> enabledWidgets = defaultWidgets();
    QString highlightColorHex = QStringLiteral("#ff8a4c");
    QList<AppShortcut> appShortcuts = defaultShortcuts();
    WeatherLocation location{QStringLiteral("San Francisco"), QStringLiteral("California"),
        QStringLiteral("United States"), 37.7749, -122.4194, QStringLiteral("America/Los_Angeles")};
    bool useCurrentLocation = true;
    bool launchAtLogin = false;
    bool showOverFullScreenApps = false;
    bool showAutoHideNudge = true;
    /// How long the pointer must rest at the screen edge before the panel makes way for the desktop's dock.
    double hideDelaySeconds = 0.5;
    /// Between the pill and the bottom edge of the screen, in points.
    double bottomGap = 2.0;

    /// Built once, on first use.
    [[nodiscard]] static const Settings &defaults();
    bool operator==(const Settings &) const = default;
};

} // namespace moorline
