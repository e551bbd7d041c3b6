#include "harness/TestCase.h"
#include "settings/SettingsCoding.h"
#include "settings/SettingsFields.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

using namespace moorline;

namespace {

/// A record in which no field has its default.
Settings unusual()
{
    Settings settings;
    settings.visibilityMode = DockVisibilityMode::hideWhenSystemDockAppears;
    settings.temperatureUnit = TemperatureUnit::celsius;
    settings.clockFormat =
        systemClockFormat() == ClockFormat::twelveHour ? ClockFormat::twentyFourHour : ClockFormat::twelveHour;
    settings.musicStyle = MusicStyle::compact;
    settings.recentAppsMode = RecentAppsMode::anyState;
    settings.musicIdleTimeoutMinutes = 30;
    settings.recentAppCount = 8;
    settings.hideDelaySeconds = 1.5;
    settings.bottomGap = 12;
    settings.highlightColorHex = QStringLiteral("#123456");
    settings.enabledWidgets = {WidgetKind::music, WidgetKind::clock};
    settings.pinnedItems = {{QStringLiteral("/a \"b\", c: {d}"), QStringLiteral("[e]")}};
    settings.appShortcuts = {{QStringLiteral("/x.app"), std::nullopt, QStringLiteral("X")}};
    settings.location = {QStringLiteral("Berlin"), std::nullopt, QStringLiteral("Germany"), 52.5, 13.4, std::nullopt};
    forEachSetting([&]<typename Value>(const char *, Value Settings::*field) {
        if constexpr (std::is_same_v<Value, bool>)
            settings.*field = !(settings.*field);
    });
    return settings;
}

Settings unusualWithDefault(const char *key)
{
    Settings settings = unusual();
    forEachSetting([&](const char *name, auto field) {
        if (qstrcmp(name, key) == 0)
            settings.*field = Settings::defaults().*field;
    });
    return settings;
}

QByteArray quoted(const QByteArray &text)
{
    return '"' + text + '"';
}

/// The document of the unusual record, with something else for the value of one key.
QByteArray replaced(const char *key, const QByteArray &raw)
{
    QByteArray json;
    const QJsonObject object = QJsonDocument::fromJson(encodeSettings(unusual())).object();
    for (auto member = object.begin(); member != object.end(); ++member) {
        const QByteArray whole =
            QJsonDocument(QJsonObject{{member.key(), member.value()}}).toJson(QJsonDocument::Compact);
        const bool isReplaced = member.key() == QLatin1StringView(key);
        json += (json.isEmpty() ? "{" : ",") + (isReplaced ? quoted(key) + ':' + raw : whole.sliced(1).chopped(1));
    }
    return json + '}';
}

/// Whether the JSON text is a value that a field of the type may have.
template <typename Value>
bool isOfType(const QByteArray &raw)
{
    if constexpr (std::is_same_v<Value, bool>)
        return raw == "true";
    else if constexpr (std::is_same_v<Value, qint64>)
        return raw == "7";
    else if constexpr (std::is_same_v<Value, double>)
        return raw == "7" || raw == "2.5";
    else if constexpr (std::is_same_v<Value, QString>)
        return raw == "\"text\"";
    else
        return raw == "[]" && requires(Value value)
        {
            value.clear();
        };
}

} // namespace

class SettingsDamageTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void damagedFieldKeepsItsDefaultAlone_data()
    {
        QTest::addColumn<QByteArray>("field");
        const auto row = [](const char *field) { QTest::newRow(field) << QByteArray(field); };
        for (const char *key : everyKey) {
            QTest::addRow("%s is null", key) << '"' + QByteArray(key) + "\":null";
            QTest::addRow("%s is an object in a list", key) << '"' + QByteArray(key) + "\":[{}]";
        }
        row(R"("visibilityMode":"sometimes")");
        row(R"("visibilityMode":"Always")");
        row(R"("visibilityMode":1)");
        row(R"("temperatureUnit":"kelvin")");
        row(R"("temperatureUnit":"")");
        row(R"("clockFormat":"24")");
        row(R"("clockFormat":24)");
        row(R"("clockFormat":["24h"])");
        row(R"("musicStyle":true)");
        row(R"("recentAppsMode":"runningOnly")");
        row(R"("hideMusicWhenIdle":0)");
        row(R"("hideMusicWhenIdle":"false")");
        row(R"("showTrash":"")");
        row(R"("launchAtLogin":1)");
        row(R"("recentAppCount":"4")");
        row(R"("recentAppCount":4.5)");
        row(R"("recentAppCount":true)");
        row(R"("recentAppCount":9223372036854775808)");
        row(R"("recentAppCount":-9223372036854777856)");
        row(R"("recentAppCount":1e300)");
        row(R"("musicIdleTimeoutMinutes":0.1)");
        row(R"("hideDelaySeconds":"1")");
        row(R"("hideDelaySeconds":false)");
        row(R"("bottomGap":[2])");
        row(R"("highlightColorHex":16747084)");
        row(R"("enabledWidgets":"clock")");
        row(R"("enabledWidgets":{"0":"clock"})");
        row(R"("enabledWidgets":["clock","stocks"])");
        row(R"("enabledWidgets":["clock",null])");
        row(R"("enabledWidgets":["monthCounter"])");
        row(R"("pinnedItems":[{"path":"/a"}])");
        row(R"("pinnedItems":[{"name":"a"}])");
        row(R"("pinnedItems":[{"path":"/a","name":"a"},{"path":"/b"}])");
        row(R"("pinnedItems":[{"path":"/a","name":7}])");
        row(R"("pinnedItems":["/a"])");
        row(R"("pinnedItems":[[]])");
        row(R"("appShortcuts":[{"path":"/a.app","bundleIdentifier":"a"}])");
        row(R"("appShortcuts":[{"path":"/a.app","name":"A","bundleIdentifier":5}])");
        row(R"("appShortcuts":[{"path":"/a.app","name":"A"},5])");
        row(R"("appShortcuts":{})");
        row(R"("location":"Berlin")");
        row(R"("location":[])");
        row(R"("location":{})");
        row(R"("location":{"name":"Berlin","latitude":52.5})");
        row(R"("location":{"name":"Berlin","latitude":"52.5","longitude":13.4})");
        row(R"("location":{"latitude":52.5,"longitude":13.4})");
        row(R"("location":{"name":"Berlin","latitude":52.5,"longitude":13.4,"country":49})");
        row(R"("location":{"name":"Berlin","latitude":52.5,"longitude":13.4,"timezone":{}})");
        row(R"("location":{"name":null,"latitude":52.5,"longitude":13.4})");
        row(R"("location":{"name":"Berlin","latitude":1e400,"longitude":13.4})");
    }

    void damagedFieldKeepsItsDefaultAlone()
    {
        QFETCH(QByteArray, field);
        const bool isNeighbour = field.contains("\"showSeconds\"");
        Settings expected;
        expected.showSeconds = !isNeighbour;
        const QByteArray json = '{' + field + (isNeighbour ? "}" : R"(,"showSeconds":true})");
        QCOMPARE(decodeSettings(json), std::optional(expected));
    }

    void whatIsNoObjectIsNotRead_data()
    {
        QTest::addColumn<QByteArray>("document");
        const QByteArray whole = encodeSettings(Settings::defaults());
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("blank") << QByteArray(" \n\t ");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("list") << QByteArray("[]");
        QTest::newRow("text") << QByteArray("\"settings\"");
        QTest::newRow("number") << QByteArray("7");
        QTest::newRow("prose") << QByteArray("hide the bar, please");
        QTest::newRow("property list") << QByteArray("<?xml version=\"1.0\"?><plist/>");
        QTest::newRow("unfinished object") << QByteArray("{");
        QTest::newRow("no value") << QByteArray("{\"showSeconds\":}");
        QTest::newRow("single quotes") << QByteArray("{'showSeconds':true}");
        QTest::newRow("comment") << QByteArray("{/* mine */}");
        QTest::newRow("trailing comma") << QByteArray("{\"showSeconds\":true,}");
        QTest::newRow("something behind") << whole + "}";
        QTest::newRow("twice") << whole + whole;
        QTest::newRow("zeroes") << QByteArray(4096, '\0');
        QTest::newRow("binary") << QByteArray::fromHex("89504e470d0a1a0a0000000dff00fe");
        QTest::newRow("UTF-16") << QByteArray::fromRawData("\xff\xfe{\0}\0", 6);
        QTest::newRow("broken UTF-8 at the end") << QByteArray("{\"highlightColorHex\":\"\xe2\x82");
        QTest::newRow("lists in lists") << QByteArray(200000, '[');
        QTest::newRow("brackets that do not match") << QByteArray("{\"pinnedItems\":[{]},\"showSeconds\":true}");
        QTest::newRow("a text without an end") << QByteArray("{\"highlightColorHex\":\"#fff}");
        QTest::newRow("a name that is no text") << QByteArray("{showSeconds:true}");
        QTest::newRow("two values") << QByteArray("{\"showSeconds\":true:false}");
        QTest::newRow("zeroes behind") << whole + QByteArray(4096, '\0');
        QTest::newRow("objects in objects") << QByteArray("{\"a\":").repeated(100000);
    }

    void whatIsNoObjectIsNotRead()
    {
        QFETCH(QByteArray, document);
        QVERIFY(!decodeSettings(document));
    }

    void truncatedDocumentIsNotRead()
    {
        const QByteArray whole = encodeSettings(Settings::defaults()).trimmed();
        for (qsizetype length = 0; length < whole.size(); ++length)
            QVERIFY2(!decodeSettings(whole.left(length)), qPrintable(QString::number(length)));
    }

    void anySingleWrongByteIsSurvived()
    {
        const QByteArray whole = encodeSettings(Settings::defaults());
        int read = 0;
        for (qsizetype place = 0; place < whole.size(); ++place) {
            for (const char wrong : {'\0', '\x7f', '\xff', '"', '{', '9'}) {
                QByteArray damaged = whole;
                damaged[place] = wrong;
                read += decodeSettings(damaged).has_value() ? 1 : 0;
            }
        }
        QVERIFY(read > 0);
    }

    void aFieldThatIsNoJsonTakesNoOtherWithIt_data()
    {
        QTest::addColumn<QByteArray>("raw");
        QTest::newRow("beyond every double") << QByteArray("1e400");
        QTest::newRow("below every double") << QByteArray("-1e400");
        QTest::newRow("not a number") << QByteArray("NaN");
        QTest::newRow("two points") << QByteArray("2.5.1");
        QTest::newRow("a word") << QByteArray("yes");
        QTest::newRow("two words") << QByteArray("true true");
        QTest::newRow("a comment") << QByteArray("2 /* points */");
        QTest::newRow("single quotes") << QByteArray("'2'");
        QTest::newRow("no UTF-8") << QByteArray("\"\xff\xfe\"");
        QTest::newRow("a broken escape") << QByteArray("\"\\u12\"");
        QTest::newRow("a zero byte") << QByteArray("2\0", 2);
        QTest::newRow("deep lists") << QByteArray(200000, '[') + QByteArray(200000, ']');
        QTest::newRow("deep objects") << QByteArray("{\"a\":").repeated(5000) + '1' + QByteArray(5000, '}');
        QTest::newRow("a trailing comma") << QByteArray("[1,]");
    }

    void aFieldThatIsNoJsonTakesNoOtherWithIt()
    {
        QFETCH(QByteArray, raw);
        for (const char *key : everyKey) {
            const QByteArray json = replaced(key, raw);
            QVERIFY2(decodeSettings(json) == std::optional(unusualWithDefault(key)), key);
        }
    }

    void noFieldOfTheUnusualRecordHasItsDefault()
    {
        int fields = 0;
        const Settings settings = unusual();
        forEachSetting([&](const char *key, auto field) {
            QVERIFY2(settings.*field != Settings::defaults().*field, key);
            ++fields;
        });
        QCOMPARE(fields, 26);
    }

    void aFieldOfAWrongTypeKeepsAllTheOthers_data()
    {
        QTest::addColumn<QByteArray>("raw");
        for (const char *raw : {"null", "true", "7", "2.5", "\"text\"", "[]", "[7]", "[null]", "{}", "{\"a\":1}"})
            QTest::newRow(raw) << QByteArray(raw);
    }

    void aFieldOfAWrongTypeKeepsAllTheOthers()
    {
        QFETCH(QByteArray, raw);
        forEachSetting([&raw]<typename Value>(const char *key, Value Settings::*field) {
            const auto read = decodeSettings(replaced(key, raw));
            QVERIFY2(read, key);
            Settings expected = unusualWithDefault(key);
            if (isOfType<Value>(raw))
                expected.*field = (*read).*field;
            QVERIFY2(*read == expected, key);
        });
    }

    void theLastOfSeveralOfOneNameCounts()
    {
        QCOMPARE(decodeSettings(R"({"bottomGap":3,"bottomGap":4})")->bottomGap, 4.0);
        QCOMPARE(decodeSettings(R"({"bottomGap":3,"bottomGap":1e400})")->bottomGap, 2.0);
        QCOMPARE(decodeSettings(R"({"bottomGap":1e400,"bottomGap":4})")->bottomGap, 4.0);
    }

    void whatStandsInATextIsNoStructure()
    {
        const auto settings = decodeSettings("{\"highlightColorHex\":\"a\\\"},[b\\\\\",\"bottomGap\":5}");
        QCOMPARE(settings->highlightColorHex, QStringLiteral("a\"},[b\\"));
        QCOMPARE(settings->bottomGap, 5.0);
    }

    void namesMayBeEscaped() { QCOMPARE(decodeSettings("{\"\\u0062ottomGap\":5}")->bottomGap, 5.0); }

    void aByteOrderMarkIsNoDamage() { QCOMPARE(decodeSettings("\xef\xbb\xbf{\"bottomGap\":5}")->bottomGap, 5.0); }

    void noiseIsSurvived()
    {
        QRandomGenerator random(20250304);
        static constexpr char bytes[] = "{}[]\",:\\0e+ \0\xff"
                                        "a";
        const QByteArray pieces(bytes, sizeof bytes - 1);
        const QByteArray whole = encodeSettings(unusual());
        for (int round = 0; round < 5000; ++round) {
            QByteArray damaged = whole.left(random.bounded(int(whole.size()) + 1));
            for (int left = random.bounded(6); left > 0 && !damaged.isEmpty(); --left)
                damaged[random.bounded(int(damaged.size()))] = pieces[random.bounded(int(pieces.size()))];
            if (const auto settings = decodeSettings(damaged))
                QCOMPARE(decodeSettings(encodeSettings(*settings)), settings);
        }
    }

    void manyMembersAreReadInNoTime()
    {
        QByteArray json = "{";
        for (int i = 0; i < 100000; ++i)
            json += quoted(QByteArray::number(i)) + ":[1],";
        QCOMPARE(decodeSettings(json + "\"bottomGap\":5}")->bottomGap, 5.0);
    }

    void hugeListIsRead()
    {
        const QByteArray item = R"({"path":"/a","name":"a"},)";
        const auto settings = decodeSettings("{\"pinnedItems\":[" + item.repeated(100000).chopped(1) + "]}");
        QCOMPARE(settings->pinnedItems.size(), 100000);
    }

private:
    static constexpr const char *everyKey[] = {"visibilityMode", "temperatureUnit", "clockFormat", "showSeconds",
        "musicStyle", "hideMusicWhenIdle", "musicIdleTimeoutMinutes", "recentAppCount", "recentAppsMode",
        "hideRecentAppsAlreadyPinned", "showAppBadges", "reserveScreenSpace", "pinnedItems", "showDownloadsFolder",
        "showTrash", "pinnedItemsIntroduced", "enabledWidgets", "highlightColorHex", "appShortcuts", "location",
        "useCurrentLocation", "launchAtLogin", "showOverFullScreenApps", "showAutoHideNudge", "hideDelaySeconds",
        "bottomGap"};
};

MOORLINE_TEST(SettingsDamageTest);
#include "SettingsDamageTest.moc"
