#include "app/WeatherServers.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

class WeatherServersTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void thePublicServersAreAskedOverProtectedConnections()
    {
        const WeatherEndpoints endpoints = publicWeatherEndpoints();
        QCOMPARE(endpoints.forecast, QUrl(QStringLiteral("https://api.open-meteo.com/v1/forecast")));
        QCOMPARE(endpoints.geocoding, QUrl(QStringLiteral("https://geocoding-api.open-meteo.com/v1/search")));
        QCOMPARE(endpoints.ipWho, QUrl(QStringLiteral("https://ipwho.is/")));
        QCOMPARE(endpoints.ipAPI, QUrl(QStringLiteral("https://ipapi.co/json/")));
        QVERIFY(endpoints.needInternet);
    }

    void oneServerMayStandInForAll()
    {
        for (const char *origin :
            {"http://localhost:8080", "http://localhost:8080/", "http://localhost:8080/some/page"}) {
            const WeatherEndpoints endpoints = weatherEndpoints(QUrl(QString::fromLatin1(origin)));
            QCOMPARE(endpoints.forecast, QUrl(QStringLiteral("http://localhost:8080/v1/forecast")));
            QCOMPARE(endpoints.geocoding, QUrl(QStringLiteral("http://localhost:8080/v1/search")));
            QCOMPARE(endpoints.ipWho, QUrl(QStringLiteral("http://localhost:8080/")));
            QCOMPARE(endpoints.ipAPI, QUrl(QStringLiteral("http://localhost:8080/json/")));
            QVERIFY(!endpoints.needInternet);
        }
    }
};

MOORLINE_TEST(WeatherServersTest);

#include "WeatherServersTest.moc"
