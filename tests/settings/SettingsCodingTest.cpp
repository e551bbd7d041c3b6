#include "settings/SettingsCoding.h"
#include "harness/TestCase.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <limits>

using namespace moorline;

namespace {

const QByteArray defaultDocument = R"({
    "appShortcuts": [
        {
            "bundleIdentifier": "com.apple.finder",
            "name": "Finder",
            "path": "/System/Library/CoreServices/Finder.app"
        }
    ],
    "bottomGap": 2,
    "clockFormat": "24h",
    "enabledWidgets": [
        "clock",
        "calendar",
        "weather",
        "forecast",
        "music",
        "app-shortcut",
        "recent-apps",
        "pinned-items"
    ],
    "hideDelaySeconds": 0.5,
    "hideMusicWhenIdle": true,
    "hideRecentAppsAlreadyPinned": true,
    "highlightColorHex": "#ff8a4c",
    "launchAtLogin": false,
    "location": {
        "admin1": "California",
        "country": "United States",
        "latitude": 37.7749,
        "longitude": -122.4194,
        "name": "San Francisco",
        "timezone": "America/Los_Angeles"
    },
    "musicIdleTimeoutMinutes": 5,
    "musicStyle": "player",
    "pinnedItems": [
    ],
    "pinnedItemsIntroduced": false,
    "recentAppCount": 3,
    "recentAppsMode": "running",
    "reserveScreenSpace": false,
    "showAppBadges": false,
    "showAutoHideNudge": true,
    "showDownloadsFolder": true,
    "showOverFullScreenApps": false,
    "showSeconds": false,
    "showTrash": true,
    "temperatureUnit": "fahrenheit",
    "useCurrentLocation": true,
    "visibilityMode": "always"
}
)";

/// Random records that are the same on every run.
class RandomSettings {
public:
    Settings next()
    {
        Settings settings;
        settings.visibilityMode = pick<DockVisibilityMode>(2);
        settings.temperatureUnit = pick<TemperatureUnit>(2);
        settings.clockFormat = pick<ClockFormat>(2);
        settings.musicStyle = pick<MusicStyle>(2);
        settings.recentAppsMode = pick<RecentAppsMode>(2);
        for (bool *choice : switches(settings))
            *choice = pick<bool>(2);
        settings.musicIdleTimeoutMinutes = integer();
        settings.recentAppCount = integer();
        settings.hideDelaySeconds = number();
        settings.bottomGap = number();
        settings.highlightColorHex = text();
        settings.enabledWidgets = list<WidgetKind>([this] { return pick<WidgetKind>(9); });
        settings.pinnedItems = list<PinnedItem>([this] { return PinnedItem{text(), text()}; });
        settings.appShortcuts = list<AppShortcut>([this] { return AppShortcut{text(), optionalText(), text()}; });
        settings.location = {text(), optionalText(), optionalText(), number(), number(), optionalText()};
        return settings;
    }

private:
    static QList<bool *> switches(Settings &settings)
    {
        return {&settings.showSeconds, &settings.hideMusicWhenIdle, &settings.hideRecentAppsAlreadyPinned,
            &settings.showAppBadges, &settings.reserveScreenSpace, &settings.showDownloadsFolder, &settings.showTrash,
            &settings.pinnedItemsIntroduced, &settings.useCurrentLocation, &settings.launchAtLogin,
            &settings.showOverFullScreenApps, &settings.showAutoHideNudge};
    }

    template <typename Value>
    Value pick(int count)
    {
        return static_cast<Value>(m_random.bounded(count));
    }

    template <typename Value, typename Make>
    QList<Value> list(Make make)
    {
        QList<Value> values;
        for (int left = m_random.bounded(5); left > 0; --left)
            values.append(make());
        return values;
    }

    qint64 integer() { return static_cast<qint64>(m_random.generate64()); }
    double number() { return (m_random.generateDouble() - 0.5) * std::pow(10, m_random.bounded(-8, 9)); }
    std::optional<QString> optionalText() { return pick<bool>(2) ? std::optional(text()) : std::nullopt; }

    QString text()
    {
        static const QStringList pieces{QStringLiteral("a"), QStringLiteral("\""), QStringLiteral("\\"),
            QStringLiteral("/"), QStringLiteral("\n"), QStringLiteral("\u0001"), QStringLiteral("é"),
            QStringLiteral("日本"), QStringLiteral("\U0001F4C1"), QStringLiteral("\u2028"), QStringLiteral(" ")};
        QString text;
        for (int left = m_random.bounded(8); left > 0; --left)
            text += pieces.at(m_random.bounded(int(pieces.size())));
        return text;
    }

    QRandomGenerator m_random{20250304};
};

} // namespace

class SettingsCodingTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void emptyObjectIsTheDefaults() { QCOMPARE(decodeSettings("{}"), std::optional(Settings::defaults())); }

    void everyFieldIsWrittenPrettyAndSorted()
    {
        Settings settings;
        settings.clockFormat = ClockFormat::twentyFourHour;
        QCOMPARE(encodeSettings(settings), defaultDocument);
        QCOMPARE(QJsonDocument::fromJson(encodeSettings(settings)).object().size(), 26);
    }

    void whatIsAbsentIsNotWritten()
    {
        Settings settings;
        settings.appShortcuts = {{QStringLiteral("/a.app"), std::nullopt, QStringLiteral("A")}};
        settings.location = {QStringLiteral("Here"), std::nullopt, std::nullopt, 1, 2, std::nullopt};
        const QByteArray json = encodeSettings(settings);
        for (const char *key : {"bundleIdentifier", "admin1", "country", "timezone"})
            QVERIFY2(!json.contains(key), key);
    }

    void textIsWrittenAsUtf8()
    {
        Settings settings;
        settings.pinnedItems = {{QStringLiteral("/日本"), QStringLiteral("Grüße")}};
        const QByteArray json = encodeSettings(settings);
        QVERIFY(json.isValidUtf8());
        QVERIFY(json.contains("\"/日本\""));
        QVERIFY(json.contains("\"Grüße\""));
    }

    void everyRecordSurvivesTheWayThroughTheFile()
    {
        RandomSettings random;
        for (int round = 0; round < 500; ++round) {
            const Settings settings = random.next();
            QCOMPARE(decodeSettings(encodeSettings(settings)), std::optional(settings));
        }
    }

    void extremeNumbersSurviveTheWayThroughTheFile()
    {
        Settings settings;
        settings.recentAppCount = std::numeric_limits<qint64>::max();
        settings.musicIdleTimeoutMinutes = std::numeric_limits<qint64>::min();
        settings.bottomGap = std::numeric_limits<double>::denorm_min();
        settings.hideDelaySeconds = std::numeric_limits<double>::max();
        QCOMPARE(decodeSettings(encodeSettings(settings)), std::optional(settings));
    }

    void rawValuesOfChoicesAreRead_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<Settings>("expected");
        const auto row = [](const char *json, auto Settings::*field, auto value) {
            Settings expected;
            expected.*field = value;
            QTest::newRow(json) << QByteArray(json) << expected;
        };
        using enum WidgetKind;
        row(R"({"visibilityMode":"always"})", &Settings::visibilityMode, DockVisibilityMode::alwaysVisible);
        row(R"({"visibilityMode":"auto"})", &Settings::visibilityMode, DockVisibilityMode::hideWhenSystemDockAppears);
        row(R"({"temperatureUnit":"celsius"})", &Settings::temperatureUnit, TemperatureUnit::celsius);
        row(R"({"temperatureUnit":"fahrenheit"})", &Settings::temperatureUnit, TemperatureUnit::fahrenheit);
        row(R"({"clockFormat":"12h"})", &Settings::clockFormat, ClockFormat::twelveHour);
        row(R"({"clockFormat":"24h"})", &Settings::clockFormat, ClockFormat::twentyFourHour);
        row(R"({"musicStyle":"player"})", &Settings::musicStyle, MusicStyle::player);
        row(R"({"musicStyle":"compact"})", &Settings::musicStyle, MusicStyle::compact);
        row(R"({"recentAppsMode":"running"})", &Settings::recentAppsMode, RecentAppsMode::runningOnly);
        row(R"({"recentAppsMode":"any"})", &Settings::recentAppsMode, RecentAppsMode::anyState);
        row(R"({"enabledWidgets":["month-counter","clock"]})", &Settings::enabledWidgets, QList{monthCounter, clock});
        row(R"({"enabledWidgets":[]})", &Settings::enabledWidgets, QList<WidgetKind>());
    }

    void rawValuesOfChoicesAreRead()
    {
        QFETCH(QByteArray, json);
        QFETCH(Settings, expected);
        QCOMPARE(decodeSettings(json), std::optional(expected));
    }

    void integersAreReadInEveryNotation_data()
    {
        QTest::addColumn<qint64>("expected");
        QTest::newRow("0") << qint64(0);
        QTest::newRow("-7") << qint64(-7);
        QTest::newRow("5.0") << qint64(5);
        QTest::newRow("1e3") << qint64(1000);
        QTest::newRow("9223372036854775807") << std::numeric_limits<qint64>::max();
        QTest::newRow("-9223372036854775808") << std::numeric_limits<qint64>::min();
    }

    void integersAreReadInEveryNotation()
    {
        const QByteArray json = QByteArray("{\"recentAppCount\":") + QTest::currentDataTag() + '}';
        QTEST(decodeSettings(json)->recentAppCount, "expected");
    }

    void wholeNumbersAreReadAsFractionsToo() { QCOMPARE(decodeSettings(R"({"bottomGap":7})")->bottomGap, 7.0); }

    void shortcutWithoutBundleIdentifierIsKnownByItsPath()
    {
        const auto settings = decodeSettings(R"({"appShortcuts":[{"path":"/a.app","name":"A"}]})");
        QCOMPARE(settings->appShortcuts.size(), 1);
        QCOMPARE(settings->appShortcuts.first().id(), QStringLiteral("/a.app"));
    }

    void nullIsAsGoodAsAbsent()
    {
        const auto settings = decodeSettings(
            R"({"location":{"name":"Here","admin1":null,"country":null,"latitude":1,"longitude":2,"timezone":null}})");
        QCOMPARE(settings->location,
            (WeatherLocation{QStringLiteral("Here"), std::nullopt, std::nullopt, 1, 2, std::nullopt}));
    }

    void unknownKeysAreOfNoInterest()
    {
        QCOMPARE(decodeSettings(R"({"colour":"red","showSeconds":true})")->showSeconds, true);
    }

    void nothingIsAddedToWhatTheDocumentHolds()
    {
        QCOMPARE(readSettings("{}")->members, QJsonObject());
        QCOMPARE(readSettings(R"({"colour":"red","bottomGap":"wide"})")->members,
            (QJsonObject{{QStringLiteral("colour"), QStringLiteral("red")},
                {QStringLiteral("bottomGap"), QStringLiteral("wide")}}));
    }

    void emptyTextsAreKept()
    {
        const auto settings = decodeSettings(R"({"highlightColorHex":"","pinnedItems":[{"path":"","name":""}]})");
        QCOMPARE(settings->highlightColorHex, QString());
        QCOMPARE(settings->pinnedItems.size(), 1);
    }
};

MOORLINE_TEST(SettingsCodingTest);
#include "SettingsCodingTest.moc"
