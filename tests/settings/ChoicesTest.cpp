#include "settings/Choices.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

struct Row {
    const char *raw;
    const char *label;
    const char *description = "";
};

/// Whether the table of an enumeration holds exactly these, in this order.
template <typename Enum>
void compare(std::initializer_list<Enum> values, std::initializer_list<Row> rows)
{
    QCOMPARE(allValues<Enum>(), QList<Enum>(values));
    QCOMPARE(values.size(), rows.size());
    const Row *row = rows.begin();
    for (const Enum value : values) {
        QCOMPARE(rawValue(value), QString::fromUtf8(row->raw));
        QCOMPARE(label(value), QString::fromUtf8(row->label));
        QCOMPARE(description(value), QString::fromUtf8(row->description));
        QCOMPARE(fromRawValue<Enum>(QString::fromUtf8(row->raw)), std::optional(value));
        ++row;
    }
}

} // namespace

class ChoicesTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void widgetsStandInCanonicalOrder()
    {
        using enum WidgetKind;
        compare({clock, calendar, weather, forecast, music, monthCounter, appShortcut, recentApps, pinnedItems},
            {{"clock", "Clock", "Time and date"}, {"calendar", "Calendar", "Weekday and day of month"},
                {"weather", "Weather", "Current conditions"}, {"forecast", "Forecast", "Next three days"},
                {"music", "Now Playing", "Music & Spotify with transport controls"},
                {"month-counter", "Year Progress", "How far through the year you are"},
                {"app-shortcut", "App Shortcuts", "Your pinned apps"},
                {"recent-apps", "Recent Apps", "The apps you used last, most recent first"},
                {"pinned-items", "Files & Folders", "Pinned files and folders, Downloads, and Trash"}});
    }

    void canonicalOrderIsThatOfTheEnumeration()
    {
        QVERIFY(std::is_sorted(allValues<WidgetKind>().begin(), allValues<WidgetKind>().end()));
    }

    void visibilityModes()
    {
        compare({DockVisibilityMode::alwaysVisible, DockVisibilityMode::hideWhenSystemDockAppears},
            {{"always", "Always visible"}, {"auto", "Hide when the macOS Dock appears"}});
    }

    void temperatureUnits()
    {
        compare({TemperatureUnit::fahrenheit, TemperatureUnit::celsius},
            {{"fahrenheit", "Fahrenheit"}, {"celsius", "Celsius"}});
    }

    void clockFormats()
    {
        compare({ClockFormat::twelveHour, ClockFormat::twentyFourHour}, {{"12h", "12-hour"}, {"24h", "24-hour"}});
    }

    void musicStyles()
    {
        compare(
            {MusicStyle::player, MusicStyle::compact}, {{"player", "Player with controls"}, {"compact", "Compact"}});
    }

    void recentAppsModes()
    {
        compare({RecentAppsMode::runningOnly, RecentAppsMode::anyState},
            {{"running", "Only apps that are running"}, {"any", "Recently used apps, open or not"}});
    }

    void whatIsInNoTableIsNoValue()
    {
        QVERIFY(!fromRawValue<ClockFormat>(QStringLiteral("24H")));
        QVERIFY(!fromRawValue<WidgetKind>(QString()));
    }
};

MOORLINE_TEST(ChoicesTest);
#include "ChoicesTest.moc"
