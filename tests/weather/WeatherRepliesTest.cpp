#include "weather/WeatherReplies.h"

#include "Replies.h"
#include "TimeZoneScope.h"
#include "fakes/FakeHttpClient.h"
#include "harness/TestCase.h"

#include <QTimeZone>

using namespace moorline;
using namespace moorline::test;

namespace {

const WeatherLocation oakland{QStringLiteral("Oakland"), QStringLiteral("California"), std::nullopt, 37.8, -122.27,
    QStringLiteral("America/Los_Angeles")};
const QDateTime now(QDate(2025, 3, 4), QTime(13, 5), Qt::UTC);

HttpAnswer answer(const QJsonObject &reply)
{
    return FakeHttpClient::json(replies::bytes(reply));
}

/// The weather of a reply that has to be readable.
WeatherSnapshot snapshot(const QJsonObject &reply)
{
    const ForecastResult result = decodeForecast(answer(reply), oakland, now);
    const auto *snapshot = std::get_if<WeatherSnapshot>(&result);
    if (!snapshot)
        qWarning().noquote() << std::get<WeatherFailure>(result).description;
    return snapshot ? *snapshot : WeatherSnapshot();
}

QString failure(const HttpAnswer &answer)
{
    const ForecastResult result = decodeForecast(answer, oakland, now);
    const auto *failure = std::get_if<WeatherFailure>(&result);
    return failure ? failure->description : QString();
}

QDateTime midnight(int day, const char *zone)
{
    return QDate(2025, 3, day).startOfDay(QTimeZone(QByteArray(zone)));
}

} // namespace

class WeatherRepliesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aForecastIsReadWhole()
    {
        const char *zone = "America/Los_Angeles";
        const WeatherSnapshot expected{60.4, 58.6, 71, 9.2, 2, true,
            {{midnight(4, zone), 2, 62.5, 48.5}, {midnight(5, zone), 63, 57.4, 47.2},
                {midnight(6, zone), 3, 58.0, 44.9}, {midnight(7, zone), 0, 61.1, 45.0}},
            now, oakland};
        QCOMPARE(snapshot(replies::forecast()), expected);
    }

    void onlyAOneIsDay()
    {
        const auto withIsDay = [](int isDay) {
            return snapshot(replies::forecastWith(QStringLiteral("current"), QStringLiteral("is_day"), isDay)).isDay;
        };
        QVERIFY(withIsDay(1));
        QVERIFY(!withIsDay(0));
        QVERIFY(!withIsDay(2));
    }

    void aStringThatIsNoDateIsSkippedWithItsValues()
    {
        const QJsonObject reply = replies::forecastWith(QStringLiteral("daily"),
            QJsonObject{{QStringLiteral("time"), replies::texts({"2025-03-04", "tomorrow", "2025-03-06"})},
                {QStringLiteral("weather_code"), QJsonArray{1, 2, 3}},
                {QStringLiteral("temperature_2m_max"), QJsonArray{10, 20, 30}},
                {QStringLiteral("temperature_2m_min"), QJsonArray{-1, -2, -3}}});
        const char *zone = "America/Los_Angeles";
        const QList<DailyForecast> expected{{midnight(4, zone), 1, 10, -1}, {midnight(6, zone), 3, 30, -3}};
        QCOMPARE(snapshot(reply).daily, expected);
    }

    void whatIsNoDate_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text : {"", "2025-13-04", "2025-02-30", "2025-03-04T00:00", "04.03.2025", "2025/03/04", "x"})
            QTest::newRow(text) << QString::fromLatin1(text);
    }
    void whatIsNoDate()
    {
        QFETCH(const QString, text);
        const QJsonObject reply =
            replies::forecastWith(QStringLiteral("daily"), QJsonObject{{QStringLiteral("time"), QJsonArray{text}}});
        QVERIFY(snapshot(reply).daily.isEmpty());
    }

    void aMissingListOfMinimaMakesThemZero()
    {
        const WeatherSnapshot weather =
            snapshot(replies::forecastWith(QStringLiteral("daily"), QStringLiteral("temperature_2m_min")));
        QCOMPARE(weather.daily.size(), 4);
        for (const DailyForecast &day : weather.daily)
            QCOMPARE(day.tempMin, 0.0);
        QCOMPARE(weather.daily.first().tempMax, 62.5);
    }

    void listsThatAreTooShortAreFilledWithZero()
    {
        const QList<DailyForecast> days =
            snapshot(replies::forecastWith(QStringLiteral("daily"), QStringLiteral("weather_code"), QJsonArray{95}))
                .daily;
        QCOMPARE(days.size(), 4);
        QCOMPARE(days[0].weatherCode, 95);
        QCOMPARE(days[1].weatherCode, 0);
    }

    void withoutDaysTheListIsEmpty()
    {
        QVERIFY(snapshot(replies::forecastWith(QStringLiteral("daily"))).daily.isEmpty());
        QVERIFY(snapshot(replies::forecastWith(QStringLiteral("daily"), QStringLiteral("time"))).daily.isEmpty());
    }

    void daysBeginInTheZoneOfThePlace_data()
    {
        QTest::addColumn<QJsonValue>("given");
        QTest::addColumn<QByteArray>("zone");
        QTest::newRow("Tokyo") << QJsonValue(QStringLiteral("Asia/Tokyo")) << QByteArray("Asia/Tokyo");
        QTest::newRow("absent") << QJsonValue(QJsonValue::Undefined) << QByteArray("UTC");
        QTest::newRow("null") << QJsonValue(QJsonValue::Null) << QByteArray("UTC");
        QTest::newRow("unknown") << QJsonValue(QStringLiteral("Mars/Olympus")) << QByteArray("America/New_York");
        QTest::newRow("a path") << QJsonValue(QStringLiteral("../zoneinfo/Asia/Tokyo"))
                                << QByteArray("America/New_York");
        QTest::newRow("empty") << QJsonValue(QString()) << QByteArray("America/New_York");
        QTest::newRow("GMT") << QJsonValue(QStringLiteral("GMT")) << QByteArray("UTC");
        QTest::newRow("an old name") << QJsonValue(QStringLiteral("Asia/Calcutta")) << QByteArray("Asia/Kolkata");
        QTest::newRow("of the open sea") << QJsonValue(QStringLiteral("Etc/GMT+3")) << QByteArray("Etc/GMT+3");
        for (const char *other : {"Europe", "America/Argentina", "XYZ5", "posixrules", "UTC+3", "/etc/localtime"})
            QTest::newRow(other) << QJsonValue(QString::fromLatin1(other)) << QByteArray("America/New_York");
    }
    void daysBeginInTheZoneOfThePlace()
    {
        QFETCH(const QJsonValue, given);
        QFETCH(const QByteArray, zone);
        const TimeZoneScope here("America/New_York");
        const WeatherSnapshot weather = snapshot(replies::forecastWith(QStringLiteral("timezone"), given));
        QCOMPARE(weather.daily.first().date, midnight(4, zone.constData()));
        QCOMPARE(weather.daily.first().date.date(), QDate(2025, 3, 4));
    }

    void inAnUnknownZoneDaysBeginAsTheyDoHere_data()
    {
        QTest::addColumn<QByteArray>("here");
        QTest::addColumn<int>("hoursEastOfGreenwich");
        QTest::newRow("a place") << QByteArray("America/New_York") << -5;
        QTest::newRow("a rule") << QByteArray("UTC-3") << 3;
        QTest::newRow("unknown as well") << QByteArray("Mars/Olympus") << 0;
    }
    void inAnUnknownZoneDaysBeginAsTheyDoHere()
    {
        QFETCH(const QByteArray, here);
        QFETCH(const int, hoursEastOfGreenwich);
        const TimeZoneScope scope(here);
        const QDateTime day =
            snapshot(replies::forecastWith(QStringLiteral("timezone"), QJsonValue(QStringLiteral("Mars/Olympus"))))
                .daily.first()
                .date;
        QCOMPARE(day.date(), QDate(2025, 3, 4));
        QCOMPARE(day, QDateTime(QDate(2025, 3, 4), QTime(0, 0), Qt::UTC).addSecs(-3600 * hoursEastOfGreenwich));
    }

    void aDayWithoutAMidnightBeginsWithItsFirstMoment()
    {
        QJsonObject reply = replies::forecastWith(
            QStringLiteral("daily"), QJsonObject{{QStringLiteral("time"), replies::texts({"2018-11-04"})}});
        // The clocks of that day went from midnight to one.
        reply[QStringLiteral("timezone")] = QStringLiteral("America/Sao_Paulo");
        const QDateTime day = snapshot(reply).daily.first().date;
        QCOMPARE(day.date(), QDate(2018, 11, 4));
        QCOMPARE(day.time(), QTime(1, 0));
    }

    void withoutCurrentConditionsThereIsNoWeather()
    {
        QCOMPARE(failure(answer(replies::forecastWith(QStringLiteral("current")))),
            QStringLiteral("No current conditions returned"));
    }

    void anotherStatusIsABadResponse()
    {
        for (const int status : {0, 100, 201, 204, 301, 400, 404, 429, 500, 503}) {
            HttpAnswer bad = answer(replies::forecast());
            bad.status = status;
            QCOMPARE(failure(bad), QStringLiteral("Weather service unavailable"));
        }
    }

    void aFailureOnTheWayKeepsItsOwnText()
    {
        QCOMPARE(failure({QStringLiteral("Connection refused"), 0, {}}), QStringLiteral("Connection refused"));
    }

    void ipWhoGivesAPlace()
    {
        const WeatherLocation expected{QStringLiteral("Munich"), QStringLiteral("Bavaria"), QStringLiteral("Germany"),
            48.1351253, 11.5819806, QStringLiteral("Europe/Berlin")};
        QCOMPARE(decodeIPWho(answer(replies::ipWho())), expected);
    }

    void ipWhoWithoutSuccessIsRefusedAlsoWithCoordinates()
    {
        QJsonObject reply = replies::ipWho();
        reply[QStringLiteral("success")] = false;
        QVERIFY(!decodeIPWho(answer(reply)));
        reply.remove(QStringLiteral("success"));
        QVERIFY(decodeIPWho(answer(reply)).has_value());
    }

    void ipAPIGivesAPlace()
    {
        const WeatherLocation expected{QStringLiteral("Oslo"), QStringLiteral("Oslo County"), QStringLiteral("Norway"),
            59.9127, 10.7461, QStringLiteral("Europe/Oslo")};
        QCOMPARE(decodeIPAPI(answer(replies::ipAPI())), expected);
    }

    void aPlaceWithoutACityIsNamedAfterItsRegion()
    {
        QJsonObject who = replies::ipWho();
        QJsonObject api = replies::ipAPI();
        who.remove(QStringLiteral("city"));
        api[QStringLiteral("city")] = QJsonValue::Null;
        QCOMPARE(decodeIPWho(answer(who))->name, QStringLiteral("Bavaria"));
        QCOMPARE(decodeIPAPI(answer(api))->name, QStringLiteral("Oslo County"));
        who.remove(QStringLiteral("region"));
        api[QStringLiteral("region")] = QString();
        QCOMPARE(decodeIPWho(answer(who))->name, QStringLiteral("Current location"));
        QCOMPARE(decodeIPAPI(answer(api))->name, QStringLiteral("Current location"));
    }

    void aPlaceWithoutBothCoordinatesIsNone()
    {
        for (const char *coordinate : {"latitude", "longitude"}) {
            QJsonObject who = replies::ipWho();
            QJsonObject api = replies::ipAPI();
            who.remove(QLatin1StringView(coordinate));
            api.remove(QLatin1StringView(coordinate));
            QVERIFY(!decodeIPWho(answer(who)));
            QVERIFY(!decodeIPAPI(answer(api)));
        }
    }

    void theStatusOfAnIPServiceIsNotExamined()
    {
        HttpAnswer refused = answer(replies::ipWho());
        refused.status = 403;
        QVERIFY(decodeIPWho(refused).has_value());
    }

    void aRateLimitIsNoPlace()
    {
        HttpAnswer limited =
            answer({{QStringLiteral("error"), true}, {QStringLiteral("reason"), QStringLiteral("RateLimited")}});
        limited.status = 429;
        QVERIFY(!decodeIPAPI(limited));
        QVERIFY(!decodeIPWho(limited));
    }

    void citiesComeInTheirOrder()
    {
        const QList<WeatherLocation> expected{
            {QStringLiteral("Berlin"), QStringLiteral("State of Berlin"), QStringLiteral("Germany"), 52.52437, 13.41053,
                QStringLiteral("Europe/Berlin")},
            {QStringLiteral("Berlin"), std::nullopt, std::nullopt, 43.96804, -88.94345, std::nullopt}};
        QCOMPARE(decodeCities(answer(replies::cities())), expected);
    }

    void noMatchIsNoCity() { QVERIFY(decodeCities(answer({{QStringLiteral("generationtime_ms"), 0.5}})).isEmpty()); }
};

MOORLINE_TEST(WeatherRepliesTest);

#include "WeatherRepliesTest.moc"
