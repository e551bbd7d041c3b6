#include "settings/Settings.h"
#include "harness/TestCase.h"

using namespace moorline;

class SettingsTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void choicesStartWithTheirDefaults()
    {
        const Settings &defaults = Settings::defaults();
        QCOMPARE(defaults.visibilityMode, DockVisibilityMode::alwaysVisible);
        QCOMPARE(defaults.temperatureUnit, TemperatureUnit::fahrenheit);
        QCOMPARE(defaults.clockFormat, systemClockFormat());
        QCOMPARE(defaults.musicStyle, MusicStyle::player);
        QCOMPARE(defaults.recentAppsMode, RecentAppsMode::runningOnly);
        QCOMPARE(defaults.highlightColorHex, QStringLiteral("#ff8a4c"));
    }

    void numbersStartWithTheirDefaults()
    {
        const Settings &defaults = Settings::defaults();
        QCOMPARE(defaults.musicIdleTimeoutMinutes, 5);
        QCOMPARE(defaults.recentAppCount, 3);
        QCOMPARE(defaults.hideDelaySeconds, 0.5);
        QCOMPARE(defaults.bottomGap, 2.0);
    }

    void switchesThatAreOnAtFirst()
    {
        const Settings &defaults = Settings::defaults();
        QVERIFY(defaults.hideMusicWhenIdle);
        QVERIFY(defaults.hideRecentAppsAlreadyPinned);
        QVERIFY(defaults.showDownloadsFolder);
        QVERIFY(defaults.showTrash);
        QVERIFY(defaults.useCurrentLocation);
        QVERIFY(defaults.showAutoHideNudge);
    }

    void switchesThatAreOffAtFirst()
    {
        const Settings &defaults = Settings::defaults();
        QVERIFY(!defaults.showSeconds);
        QVERIFY(!defaults.showAppBadges);
        QVERIFY(!defaults.reserveScreenSpace);
        QVERIFY(!defaults.pinnedItemsIntroduced);
        QVERIFY(!defaults.launchAtLogin);
        QVERIFY(!defaults.showOverFullScreenApps);
    }

    void everyWidgetButTheYearIsShownAtFirst()
    {
        using enum WidgetKind;
        QCOMPARE(Settings::defaults().enabledWidgets,
            (QList{clock, calendar, weather, forecast, music, appShortcut, recentApps, pinnedItems}));
    }

    void onlyTheFileManagerIsPinnedAtFirst()
    {
        const AppShortcut finder{QStringLiteral("/System/Library/CoreServices/Finder.app"),
            QStringLiteral("com.apple.finder"), QStringLiteral("Finder")};
        QCOMPARE(defaultShortcuts(), QList{finder});
        QCOMPARE(Settings::defaults().appShortcuts, QList{finder});
        QVERIFY(Settings::defaults().pinnedItems.isEmpty());
    }

    void theWeatherIsThatOfSanFranciscoAtFirst()
    {
        const WeatherLocation sanFrancisco{QStringLiteral("San Francisco"), QStringLiteral("California"),
            QStringLiteral("United States"), 37.7749, -122.4194, QStringLiteral("America/Los_Angeles")};
        QCOMPARE(Settings::defaults().location, sanFrancisco);
    }

    void subtitleOfAPlaceNamesWhatIsKnown()
    {
        WeatherLocation place = Settings::defaults().location;
        QCOMPARE(place.subtitle(), QStringLiteral("California, United States"));
        place.country.reset();
        QCOMPARE(place.subtitle(), QStringLiteral("California"));
        place.admin1.reset();
        QCOMPARE(place.subtitle(), QString());
        place.country = QStringLiteral("Chile");
        QCOMPARE(place.subtitle(), QStringLiteral("Chile"));
    }

    void shortcutIsKnownByItsBundleOrItsPath()
    {
        AppShortcut shortcut{QStringLiteral("/Applications/Notes.app"), QStringLiteral("org.notes"), QString()};
        QCOMPARE(shortcut.id(), QStringLiteral("org.notes"));
        shortcut.bundleIdentifier.reset();
        QCOMPARE(shortcut.id(), QStringLiteral("/Applications/Notes.app"));
    }

    void emptyBundleIdentifierIsStillAnIdentity()
    {
        const AppShortcut shortcut{QStringLiteral("/a.app"), QString(QStringLiteral("")), QStringLiteral("A")};
        QCOMPARE(shortcut.id(), QString());
    }

    void pinnedItemIsKnownByItsPath()
    {
        QCOMPARE(
            (PinnedItem{QStringLiteral("/home/notes"), QStringLiteral("notes")}.id()), QStringLiteral("/home/notes"));
    }
};

MOORLINE_TEST(SettingsTest);
#include "SettingsTest.moc"
