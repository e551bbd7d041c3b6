#include "settings/WidgetKind.h"
#include "harness/TestCase.h"

using namespace moorline;

class WidgetKindTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyKindHasItsTexts_data()
    {
        QTest::addColumn<WidgetKind>("kind");
        QTest::addColumn<QString>("raw");
        QTest::addColumn<QString>("heading");
        QTest::addColumn<QString>("explanation");
        const auto row = [](WidgetKind kind, const char *raw, const char *heading, const char *explanation) {
            QTest::newRow(raw) << kind << QString::fromUtf8(raw) << QString::fromUtf8(heading)
                               << QString::fromUtf8(explanation);
        };
        using enum WidgetKind;
        row(clock, "clock", "Clock", "Time and date");
        row(calendar, "calendar", "Calendar", "Weekday and day of month");
        row(weather, "weather", "Weather", "Current conditions");
        row(forecast, "forecast", "Forecast", "Next three days");
        row(music, "music", "Now Playing", "Music & Spotify with transport controls");
        row(monthCounter, "month-counter", "Year Progress", "How far through the year you are");
        row(appShortcut, "app-shortcut", "App Shortcuts", "Your pinned apps");
        row(recentApps, "recent-apps", "Recent Apps", "The apps you used last, most recent first");
        row(pinnedItems, "pinned-items", "Files & Folders", "Pinned files and folders, Downloads, and Trash");
    }

    void everyKindHasItsTexts()
    {
        QFETCH(WidgetKind, kind);
        QTEST(rawValue(kind), "raw");
        QTEST(title(kind), "heading");
        QTEST(description(kind), "explanation");
    }

    void theKindsAreListedInCanonicalOrder()
    {
        using enum WidgetKind;
        QCOMPARE(allWidgetKinds(),
            (QList{clock, calendar, weather, forecast, music, monthCounter, appShortcut, recentApps, pinnedItems}));
    }
};

MOORLINE_TEST(WidgetKindTest);
#include "WidgetKindTest.moc"
