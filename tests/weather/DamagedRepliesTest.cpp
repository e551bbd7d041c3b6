#include "WeatherFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QString unreadable = QStringLiteral("The data couldn’t be read because it isn’t in the correct format.");
const QString unavailable = QStringLiteral("Weather service unavailable");

HttpAnswer json(const QByteArray &body)
{
    return FakeHttpClient::json(body);
}

QJsonArray repeated(const QJsonValue &value, int times)
{
    QJsonArray list;
    for (int i = 0; i < times; ++i)
        list.append(value);
    return list;
}

/// JSON text that no writer of JSON would produce, put in the place of a value.
QByteArray forecastWithRaw(const QByteArray &field, const QByteArray &value, const QByteArray &raw)
{
    QByteArray body = replies::bytes(replies::forecast());
    return body.replace("\"" + field + "\":" + value, "\"" + field + "\":" + raw);
}

void addSyntax()
{
    const QByteArray whole = replies::bytes(replies::forecast());
    const auto row = [](const char *name, const QByteArray &body) { QTest::newRow(name) << json(body) << unreadable; };
    row("empty", "");
    row("a space", " ");
    row("null", "null");
    row("true", "true");
    row("a number", "42");
    row("a text", "\"sunny\"");
    row("a list", "[]");
    row("a list of forecasts", "[" + whole + "]");
    row("cut off after one byte", whole.left(1));
    row("cut off in the middle", whole.left(whole.size() / 2));
    row("cut off before the last byte", whole.chopped(1));
    row("something behind it", whole + "}");
    row("twice", whole + whole);
    row("a page", "<!DOCTYPE html><html><body>Sign in to the hotel</body></html>");
    row("zero bytes", QByteArray(1000, '\0'));
    row("noise", QByteArray::fromHex("fffe00d8feff9f8e7d6c5b4a39281706"));
    row("UTF-16", QByteArray(reinterpret_cast<const char *>(u"{\"current\":{}}"), 28));
    row("text that is not UTF-8",
        QByteArray(whole).replace("America",
            "Am\xff\xfe"
            "ica"));
    row("a hundred thousand brackets", QByteArray(100'000, '['));
    row("a hundred thousand nested objects", QByteArray("{\"current\":").repeated(100'000));
    row("NaN", forecastWithRaw("temperature_2m", "60.4", "NaN"));
    row("infinity", forecastWithRaw("temperature_2m", "60.4", "Infinity"));
    row("beyond every double", forecastWithRaw("temperature_2m", "60.4", "1e999"));
    row("a number with two points", forecastWithRaw("temperature_2m", "60.4", "6.0.4"));
    row("a comment", forecastWithRaw("temperature_2m", "60.4", "60.4/* warm */"));
}

void addCurrent()
{
    const QString current = QStringLiteral("current");
    for (const char *field : {"temperature_2m", "relative_humidity_2m", "apparent_temperature", "is_day",
             "weather_code", "wind_speed_10m"}) {
        const auto with = [&](const QJsonValue &value) {
            return json(replies::bytes(replies::forecastWith(current, QLatin1StringView(field), value)));
        };
        QTest::addRow("%s missing", field) << with(QJsonValue::Undefined) << unreadable;
        QTest::addRow("%s null", field) << with(QJsonValue::Null) << unreadable;
        QTest::addRow("%s a text", field) << with(QStringLiteral("60.4")) << unreadable;
        QTest::addRow("%s a flag", field) << with(true) << unreadable;
        QTest::addRow("%s a list", field) << with(QJsonArray{60.4}) << unreadable;
        QTest::addRow("%s absurd", field) << with(1e300) << unreadable;
        QTest::addRow("%s absurdly low", field) << with(-1e300) << unreadable;
    }
    for (const char *field : {"is_day", "weather_code"})
        QTest::addRow("%s with a fraction", field)
            << json(replies::bytes(replies::forecastWith(current, QLatin1StringView(field), 1.5))) << unreadable;
    for (const QJsonValue &value :
        {QJsonValue(1), QJsonValue(QStringLiteral("x")), QJsonValue(QJsonArray()), QJsonValue(false)})
        QTest::addRow("current is %d", int(value.type()))
            << json(replies::bytes(replies::forecastWith(current, value))) << unreadable;
    QTest::newRow("current is null") << json(replies::bytes(replies::forecastWith(current, QJsonValue::Null)))
                                     << QStringLiteral("No current conditions returned");
}

void addDaily()
{
    const QString daily = QStringLiteral("daily");
    for (const char *field : {"time", "weather_code", "temperature_2m_max", "temperature_2m_min"}) {
        const auto with = [&](const QJsonValue &value) {
            return json(replies::bytes(replies::forecastWith(daily, QLatin1StringView(field), value)));
        };
        QTest::addRow("%s a text", field) << with(QStringLiteral("2025-03-04")) << unreadable;
        QTest::addRow("%s an object", field) << with(QJsonObject()) << unreadable;
        QTest::addRow("%s with a null", field) << with(QJsonArray{QJsonValue::Null}) << unreadable;
        QTest::addRow("%s with a list", field) << with(QJsonArray{QJsonArray()}) << unreadable;
        QTest::addRow("%s of a hundred thousand", field) << with(repeated(1, 100'000)) << unreadable;
    }
    QTest::newRow("dates that are numbers")
        << json(replies::bytes(replies::forecastWith(daily, QStringLiteral("time"), QJsonArray{20250304})))
        << unreadable;
    QTest::newRow("a hundred thousand dates") << json(replies::bytes(
        replies::forecastWith(daily, QStringLiteral("time"), repeated(QStringLiteral("2025-03-04"), 100'000))))
                                              << unreadable;
    QTest::newRow("absurd maxima") << json(
        replies::bytes(replies::forecastWith(daily, QStringLiteral("temperature_2m_max"), QJsonArray{1e300})))
                                   << unreadable;
    QTest::newRow("codes with a fraction")
        << json(replies::bytes(replies::forecastWith(daily, QStringLiteral("weather_code"), QJsonArray{0.5})))
        << unreadable;
    QTest::newRow("daily is a list") << json(replies::bytes(replies::forecastWith(daily, QJsonArray()))) << unreadable;
    QTest::newRow("a zone that is a number")
        << json(replies::bytes(replies::forecastWith(QStringLiteral("timezone"), 1))) << unreadable;
    QTest::newRow("a zone as long as a book")
        << json(replies::bytes(replies::forecastWith(QStringLiteral("timezone"), QString(100'000, u'x'))))
        << unreadable;
}

void addTransport()
{
    const QByteArray whole = replies::bytes(replies::forecast());
    QTest::newRow("no content") << HttpAnswer{std::nullopt, 204, {}} << unavailable;
    QTest::newRow("an error of the server") << HttpAnswer{std::nullopt, 500, whole} << unavailable;
    QTest::newRow("too many requests") << HttpAnswer{std::nullopt, 429,
        R"({"error":true,"reason":"Minutely API request limit exceeded."})"}
                                       << unavailable;
    QTest::newRow("a bad request") << HttpAnswer{std::nullopt, 400,
        R"({"error":true,"reason":"Latitude must be in range of -90 to 90°."})"}
                                   << unavailable;
    QTest::newRow("offline") << HttpAnswer{QStringLiteral("offline"), 0, {}} << QStringLiteral("offline");
    QTest::newRow("cut off, with the beginning of an answer")
        << HttpAnswer{QStringLiteral("cut off"), 200, whole} << QStringLiteral("cut off");
}

} // namespace

class DamagedRepliesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aDamagedForecastLeavesTheWeatherAsItWas_data()
    {
        QTest::addColumn<HttpAnswer>("damaged");
        QTest::addColumn<QString>("error");
        addSyntax();
        addCurrent();
        addDaily();
        addTransport();
    }
    void aDamagedForecastLeavesTheWeatherAsItWas()
    {
        QFETCH(const HttpAnswer, damaged);
        WeatherFixture fixture;
        fixture.chooseCity();
        fixture.service->start();
        QVERIFY(fixture.answerForecast());
        const auto good = fixture.service->snapshot();
        QVERIFY(good.has_value());
        QSignalSpy changed(fixture.service.get(), &WeatherService::snapshotChanged);

        fixture.clock.advance(WeatherService::refreshInterval);
        QVERIFY(fixture.client.answer(damaged));
        QTEST(fixture.service->lastError().value_or(QString()), "error");
        QCOMPARE(fixture.service->snapshot(), good);
        QCOMPARE(changed.size(), 0);

        // And the next good answer is welcome again.
        fixture.clock.advance(WeatherService::refreshInterval);
        QVERIFY(fixture.answerForecast());
        QVERIFY(!fixture.service->lastError());
    }

    void damagedCitiesAreNone_data()
    {
        QTest::addColumn<QByteArray>("body");
        const QByteArray whole = replies::bytes(replies::cities());
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut off") << whole.left(whole.size() - 2);
        QTest::newRow("a page") << QByteArray("<html></html>");
        QTest::newRow("results a text") << QByteArray(R"({"results":"Berlin"})");
        QTest::newRow("results null") << QByteArray(R"({"results":null})");
        QTest::newRow("a result that is none") << QByteArray(R"({"results":[1]})");
        QTest::newRow("an empty result") << QByteArray(R"({"results":[{}]})");
        QTest::newRow("no name") << QByteArray(R"({"results":[{"latitude":1,"longitude":2}]})");
        QTest::newRow("no latitude") << QByteArray(R"({"results":[{"name":"X","longitude":2}]})");
        QTest::newRow("no longitude") << QByteArray(R"({"results":[{"name":"X","latitude":2}]})");
        QTest::newRow("beyond the pole") << QByteArray(R"({"results":[{"name":"X","latitude":90.1,"longitude":2}]})");
        QTest::newRow("round the world") << QByteArray(R"({"results":[{"name":"X","latitude":9,"longitude":-181}]})");
        QTest::newRow("a latitude in words")
            << QByteArray(R"({"results":[{"name":"X","latitude":"north","longitude":2}]})");
        QTest::newRow("a country that is a number")
            << QByteArray(R"({"results":[{"name":"X","latitude":1,"longitude":2,"country":49}]})");
        QTest::newRow("a name as long as a book")
            << QByteArray(R"({"results":[{"name":")" + QByteArray(100'000, 'x') + R"(","latitude":1,"longitude":2}]})");
        QTest::newRow("a hundred thousand results") << QByteArray(R"({"results":[)"
            + QByteArray(R"({"name":"X","latitude":1,"longitude":2},)").repeated(100'000)
            + R"({"name":"X","latitude":1,"longitude":2}]})");
        QTest::newRow("one good and one bad")
            << QByteArray(R"({"results":[{"name":"X","latitude":1,"longitude":2},{"name":"Y"}]})");
    }
    void damagedCitiesAreNone()
    {
        QFETCH(const QByteArray, body);
        QVERIFY(decodeCities(json(body)).isEmpty());
    }

    void aDamagedPlaceOfTheCallerIsNone_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QJsonValue>("value");
        const auto row = [](const char *name, const char *field, const QJsonValue &value) {
            QTest::newRow(name) << QString::fromLatin1(field) << value;
        };
        row("latitude in words", "latitude", QStringLiteral("48.1"));
        row("latitude null", "latitude", QJsonValue::Null);
        row("latitude beyond the pole", "latitude", -90.5);
        row("longitude a list", "longitude", QJsonArray{11.5});
        row("longitude round the world", "longitude", 1e9);
        row("city a number", "city", 1);
        row("city a list", "city", QJsonArray{QStringLiteral("Munich")});
        row("city as long as a book", "city", QString(100'000, u'x'));
        row("region a flag", "region", true);
        row("timezone a flag", "timezone", false);
    }
    void aDamagedPlaceOfTheCallerIsNone()
    {
        QFETCH(const QString, field);
        QFETCH(const QJsonValue, value);
        QJsonObject who = replies::ipWho();
        QJsonObject api = replies::ipAPI();
        who[field] = value;
        api[field] = value;
        QVERIFY(!decodeIPWho(json(replies::bytes(who))));
        QVERIFY(!decodeIPAPI(json(replies::bytes(api))));
    }

    void damagedFieldsOfOneServiceAlone()
    {
        QJsonObject who = replies::ipWho();
        who[QStringLiteral("success")] = QStringLiteral("yes");
        QVERIFY(!decodeIPWho(json(replies::bytes(who))));
        who = replies::ipWho();
        who[QStringLiteral("timezone")] = QStringLiteral("Europe/Berlin");
        QVERIFY(!decodeIPWho(json(replies::bytes(who))));
        QJsonObject api = replies::ipAPI();
        api[QStringLiteral("timezone")] = QJsonObject{{QStringLiteral("id"), QStringLiteral("Europe/Oslo")}};
        QVERIFY(!decodeIPAPI(json(replies::bytes(api))));
        api = replies::ipAPI();
        api[QStringLiteral("country_name")] = 47;
        QVERIFY(!decodeIPAPI(json(replies::bytes(api))));
    }

    void whatDoesNotComeWholeIsNoPlace()
    {
        for (const QByteArray &body : {QByteArray(), QByteArray("[]"), QByteArray("{"), QByteArray("{}")}) {
            QVERIFY(!decodeIPWho(json(body)));
            QVERIFY(!decodeIPAPI(json(body)));
        }
        HttpAnswer cutOff = json(replies::bytes(replies::ipWho()));
        cutOff.failure = QStringLiteral("cut off");
        QVERIFY(!decodeIPWho(cutOff));
    }
};

MOORLINE_TEST(DamagedRepliesTest);

#include "DamagedRepliesTest.moc"
