#include "harness/TestCase.h"
#include "settings/SettingsCoding.h"

using namespace moorline;

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
        QTest::newRow("no UTF-8") << QByteArray("{\"highlightColorHex\":\"\xff\xfe\"}");
        QTest::newRow("broken UTF-8 at the end") << QByteArray("{\"highlightColorHex\":\"\xe2\x82");
        QTest::newRow("lists in lists") << QByteArray(200000, '[');
        QTest::newRow("deep lists in a field")
            << "{\"pinnedItems\":" + QByteArray(200000, '[') + QByteArray(200000, ']') + '}';
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
