#include "platform/linux/location/GWeatherGeocoder.h"

#include "harness/TestCase.h"

#include <QThread>
#include <QTimeZone>

using namespace moorline;
using namespace moorline::test;

namespace {

/// What a geocoder said, and in what order.
struct Answers {
    Geocoder::Completion next()
    {
        return [this](const QList<Placemark> &placemarks) {
            isOnMainThread = isOnMainThread && QThread::currentThread() == qApp->thread();
            all.append(placemarks);
        };
    }

    QList<QList<Placemark>> all;
    bool isOnMainThread = true;
};

} // namespace

class GWeatherGeocoderTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void citiesHaveTheirNames_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<QString>("city");
        QTest::addColumn<QString>("division");
        QTest::addColumn<QString>("country");
        QTest::addColumn<QString>("zone");

        const auto row = [](double latitude, double longitude, const char *city, const char *division,
                             const char *country, const char *zone) {
            QTest::newRow(city) << latitude << longitude << QString::fromLatin1(city) << QString::fromLatin1(division)
                                << QString::fromLatin1(country) << QString::fromLatin1(zone);
        };
        row(48.14, 11.58, "Munich", "Bavaria", "Germany", "Europe/Berlin");
        row(37.77, -122.42, "San Francisco", "California", "United States", "America/Los_Angeles");
        row(-33.87, 151.2, "Sydney", "New South Wales", "Australia", "Australia/Sydney");
    }

    void citiesHaveTheirNames()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        GWeatherGeocoder geocoder;
        Answers answers;
        geocoder.reverseGeocode(latitude, longitude, answers.next());
        QVERIFY(answers.all.isEmpty());
        QTRY_COMPARE(answers.all.size(), 1);
        QVERIFY(answers.isOnMainThread);
        QCOMPARE(answers.all.first().size(), 1);
        const Placemark place = answers.all.first().first();
        QTEST(place.locality.value_or(QString()), "city");
        QTEST(place.administrativeArea.value_or(QString()), "division");
        QTEST(place.country.value_or(QString()), "country");
        QTEST(place.timeZone.value_or(QString()), "zone");
        QVERIFY(QTimeZone(place.timeZone.value_or(QString()).toLatin1()).isValid());
        QVERIFY(!place.subAdministrativeArea);
    }

    void aCityTellsHowFarItIs_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<double>("nearest");
        QTest::addColumn<double>("farthest");
        QTest::newRow("in the city") << 48.14 << 11.58 << 0.0 << 20.0;
        QTest::newRow("out at sea") << 0.0 << 0.0 << 500.0 << 700.0;
    }

    void aCityTellsHowFarItIs()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        QFETCH(double, nearest);
        QFETCH(double, farthest);
        GWeatherGeocoder geocoder;
        Answers answers;
        geocoder.reverseGeocode(latitude, longitude, answers.next());
        QTRY_COMPARE(answers.all.size(), 1);
        const double distance = answers.all.first().first().distance.value_or(-1);
        QVERIFY2(distance >= nearest && distance <= farthest, qPrintable(QString::number(distance)));
    }

    void aCountryWithoutDivisionsHasNone_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::newRow("Singapore") << 1.29 << 103.85;
        QTest::newRow("Reykjavik") << 64.13 << -21.9;
    }

    void aCountryWithoutDivisionsHasNone()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        GWeatherGeocoder geocoder;
        Answers answers;
        geocoder.reverseGeocode(latitude, longitude, answers.next());
        QTRY_COMPARE(answers.all.size(), 1);
        QVERIFY(answers.all.first().first().locality);
        QVERIFY(!answers.all.first().first().administrativeArea);
    }

    void placesThatAreNoneHaveNoName_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::newRow("not a number") << qQNaN() << 11.58;
        QTest::newRow("nowhere round the world") << 48.14 << qQNaN();
        QTest::newRow("infinite") << -qInf() << 11.58;
        QTest::newRow("beyond the pole") << 90.01 << 11.58;
        QTest::newRow("beyond the date line") << 48.14 << -180.01;
    }

    void placesThatAreNoneHaveNoName()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        GWeatherGeocoder geocoder;
        Answers answers;
        geocoder.reverseGeocode(latitude, longitude, answers.next());
        QVERIFY(answers.all.isEmpty());
        QTRY_COMPARE(answers.all.size(), 1);
        QVERIFY(answers.all.first().isEmpty());
        QVERIFY(answers.isOnMainThread);
    }

    void thePolesAndTheDateLineAreOnEarth_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::newRow("north") << 90.0 << 0.0;
        QTest::newRow("south") << -90.0 << 0.0;
        QTest::newRow("east") << -17.0 << 180.0;
        QTest::newRow("west") << -17.0 << -180.0;
    }

    void thePolesAndTheDateLineAreOnEarth()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        GWeatherGeocoder geocoder;
        Answers answers;
        geocoder.reverseGeocode(latitude, longitude, answers.next());
        QTRY_COMPARE(answers.all.size(), 1);
        QCOMPARE(answers.all.first().size(), 1);
    }

    void questionsAreAnsweredInTheirOrder()
    {
        GWeatherGeocoder geocoder;
        Answers answers;
        geocoder.reverseGeocode(48.14, 11.58, answers.next());
        geocoder.reverseGeocode(qQNaN(), 0, answers.next());
        geocoder.reverseGeocode(37.77, -122.42, answers.next());
        QTRY_COMPARE(answers.all.size(), 3);
        QCOMPARE(answers.all.at(0).first().locality, std::optional(QStringLiteral("Munich")));
        QVERIFY(answers.all.at(1).isEmpty());
        QCOMPARE(answers.all.at(2).first().locality, std::optional(QStringLiteral("San Francisco")));
    }

    void oneThatIsGoneAnswersNoMore()
    {
        Answers answers;
        auto geocoder = std::make_unique<GWeatherGeocoder>();
        for (int count = 0; count < 20; ++count)
            geocoder->reverseGeocode(48.14, 11.58, answers.next());
        QTRY_VERIFY(!answers.all.isEmpty());
        geocoder.reset();
        const auto heard = answers.all.size();
        GWeatherGeocoder another;
        another.reverseGeocode(48.14, 11.58, answers.next());
        QTRY_COMPARE(answers.all.size(), heard + 1);
    }

    void isDestroyedByItsOwnAnswer()
    {
        auto geocoder = std::make_unique<GWeatherGeocoder>();
        geocoder->reverseGeocode(48.14, 11.58, [&geocoder](const QList<Placemark> &) { geocoder.reset(); });
        geocoder->reverseGeocode(48.14, 11.58, [](const QList<Placemark> &) { QFAIL("asked of one that is gone"); });
        QTRY_VERIFY(!geocoder);
    }
};

MOORLINE_TEST(GWeatherGeocoderTest);

#include "GWeatherGeocoderTest.moc"
