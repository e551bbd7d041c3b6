#include "GeoClueTestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class GeoCluePositionTest final : public GeoClueTestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFixIsReadAndTold()
    {
        m_geoClue->setLocation(-33.87, 151.2, {secondsAtStart - 60, 250'000});
        Client client;
        authorize(client);
        receiveFirstFix(client);
        const auto timestamp = startOfTest.addSecs(-60).addMSecs(250);
        QCOMPARE(client.onlyUpdate(), (PositionFix{-33.87, 151.2, timestamp}));
        QCOMPARE(client.failures.size(), 0);
    }

    void aFixIsKeptAfterItsSession()
    {
        Client client;
        authorize(client);
        receiveFirstFix(client);
        m_geoClue->stop();
        client.clock.advance(1h);
        QCOMPARE(client.manager->location(), std::optional(client.onlyUpdate()));
    }

    void theServiceIsLetGoOfAfterAFix()
    {
        Client client;
        authorize(client);
        client.manager->requestLocation();
        m_geoClue->tellLocation();
        QTRY_VERIFY(!m_geoClue->hasClient());
        QVERIFY(!m_geoClue->isTracking());
        QCOMPARE(m_geoClue->calls().last(2), (QStringList{stopMethod, QStringLiteral("DeleteClient")}));
        QCOMPARE(client.clock.runningTimers(), 0);
        m_geoClue->setLocation(1, 2, {});
        m_geoClue->tellLocation();
        QVERIFY(settle());
        QCOMPARE(client.updates.size(), 1);
        QCOMPARE(m_geoClue->count(getAll), 1);
    }

    void aFixNobodyWaitsForIsKeptQuietly()
    {
        Client client;
        authorize(client);
        m_geoClue->tellLocation();
        QTRY_VERIFY(client.manager->location());
        QVERIFY(settle());
        QCOMPARE(client.updates.size(), 0);
        QVERIFY(!m_geoClue->isTracking());
    }

    void placesThatAreNoneAreNotBelieved_data()
    {
        QTest::addColumn<QVariant>("latitude");
        QTest::addColumn<QVariant>("longitude");

        QTest::newRow("not a number") << QVariant(qQNaN()) << QVariant(11.58);
        QTest::newRow("infinite") << QVariant(48.14) << QVariant(qInf());
        QTest::newRow("beyond the pole") << QVariant(90.01) << QVariant(11.58);
        QTest::newRow("beyond the other pole") << QVariant(-90.01) << QVariant(11.58);
        QTest::newRow("round the world") << QVariant(48.14) << QVariant(180.01);
        QTest::newRow("round the other way") << QVariant(48.14) << QVariant(-180.01);
        QTest::newRow("the largest number") << QVariant(std::numeric_limits<double>::max()) << QVariant(11.58);
        QTest::newRow("a text") << QVariant(QStringLiteral("48.14")) << QVariant(11.58);
        QTest::newRow("a whole number") << QVariant(48) << QVariant(11);
        QTest::newRow("a truth") << QVariant(true) << QVariant(11.58);
        QTest::newRow("a structure") << QVariant::fromValue(GeoClueTimestamp{48, 14}) << QVariant(11.58);
        QTest::newRow("no latitude") << QVariant() << QVariant(11.58);
        QTest::newRow("no longitude") << QVariant(48.14) << QVariant();
    }

    void placesThatAreNoneAreNotBelieved()
    {
        QFETCH(QVariant, latitude);
        QFETCH(QVariant, longitude);
        m_geoClue->setLocation(0, 0, {});
        putInLocation(QStringLiteral("Latitude"), latitude);
        putInLocation(QStringLiteral("Longitude"), longitude);
        Client client;
        tellInVain(client);
        QCOMPARE(client.updates.size(), 0);
        QVERIFY(!client.manager->location());

        m_geoClue->setLocation(90, -180, {});
        tellFirstFix(client);
    }

    void timesThatAreNoneAreNow_data()
    {
        QTest::addColumn<QVariant>("timestamp");
        const auto time = [](quint64 seconds, quint64 microseconds) {
            return QVariant::fromValue(GeoClueTimestamp{seconds, microseconds});
        };
        QTest::newRow("absent") << QVariant();
        QTest::newRow("never") << time(0, 0);
        QTest::newRow("to come") << time(secondsAtStart, 999'999);
        QTest::newRow("tomorrow") << time(secondsAtStart + 86400, 0);
        QTest::newRow("at the end of time") << time(std::numeric_limits<quint64>::max(), 0);
        QTest::newRow("too many microseconds") << time(secondsAtStart - 5, 1'000'000);
        QTest::newRow("far too many") << time(secondsAtStart - 5, std::numeric_limits<quint64>::max());
        QTest::newRow("a number") << QVariant(secondsAtStart - 5);
        QTest::newRow("a text") << QVariant(QStringLiteral("now"));
        QTest::newRow("a list") << QVariant(QVariantList{secondsAtStart - 5, 0});
    }

    void timesThatAreNoneAreNow()
    {
        QFETCH(QVariant, timestamp);
        putInLocation(QStringLiteral("Timestamp"), timestamp);
        Client client;
        authorize(client);
        receiveFirstFix(client);
        QCOMPARE(client.onlyUpdate(), (PositionFix{48.14, 11.58, startOfTest}));
    }

    void aLocationThatCannotBeReadGivesWayToTheNext_data()
    {
        QTest::addColumn<QVariantList>("answer");
        QTest::newRow("nothing") << QVariantList{};
        QTest::newRow("a text") << QVariantList{QStringLiteral("here")};
        QTest::newRow("two answers") << QVariantList{QVariantMap{}, QVariantMap{}};
        QTest::newRow("nothing known") << QVariantList{QVariantMap{}};
    }

    void aLocationThatCannotBeReadGivesWayToTheNext()
    {
        QFETCH(QVariantList, answer);
        m_geoClue->answerWith(getAll, answer);
        Client client;
        tellInVain(client);
        QCOMPARE(client.failures.size(), 0);
        m_geoClue->answerWith(getAll, {m_geoClue->location});
        tellFirstFix(client);
    }

    void aLocationThatIsGoneGivesWayToTheNext()
    {
        m_geoClue->fail(getAll, QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"));
        Client client;
        tellInVain(client);
        QCOMPARE(client.failures.size(), 0);
        QCOMPARE(client.state(), authorized);
        m_geoClue->answerWith(getAll, {m_geoClue->location});
        tellFirstFix(client);
    }

    void noLocationIsNoFix()
    {
        Client client;
        authorize(client);
        client.manager->requestLocation();
        m_geoClue->tellLocation(QStringLiteral("/"));
        QVERIFY(settle());
        QCOMPARE(m_geoClue->count(getAll), 0);
        QVERIFY(m_geoClue->isTracking());
    }

    void strangersAreNotBelieved()
    {
        Client client;
        authorize(client);
        client.manager->requestLocation();
        m_geoClue->tellLocationAsStranger();
        QVERIFY(settle());
        QCOMPARE(m_geoClue->count(getAll), 0);
    }

    void aLocationToldBeforeTheDecisionIsReadAfterIt()
    {
        m_geoClue->hold(startMethod);
        Client client;
        client.manager->requestLocation();
        QVERIFY(settle());
        m_geoClue->tellLocation();
        QVERIFY(settle());
        QCOMPARE(m_geoClue->count(getAll), 0);
        m_geoClue->release(startMethod);
        QTRY_COMPARE(client.updates.size(), 1);
    }

    void aLateFixCounts()
    {
        Client client;
        authorize(client);
        client.manager->requestLocation();
        client.clock.advance(29s);
        tellFirstFix(client);
        QCOMPARE(client.manager->location(), std::optional(client.onlyUpdate()));
    }

    void noFixInTimeIsAFailure()
    {
        Client client;
        authorize(client);
        client.manager->requestLocation();
        client.clock.advance(29s);
        QCOMPARE(client.failures.size(), 0);
        client.clock.advance(1s);
        QCOMPARE(client.failures.size(), 1);
        QCOMPARE(client.state(), authorized);
        QTRY_VERIFY(!m_geoClue->hasClient());
        client.clock.advance(1h);
        QCOMPARE(client.failures.size(), 1);
    }

    void aRefusedRequestFails()
    {
        Client client;
        authorize(client);
        client.clock.advance(30s);
        m_geoClue->fail(startMethod, accessDenied);
        client.manager->requestLocation();
        QTRY_COMPARE(client.failures.size(), 1);
        QCOMPARE(client.state(), denied);
        QCOMPARE(client.changes.size(), 2);
    }

    void aRefusedRequestIsAnsweredOnce()
    {
        m_geoClue->fail(startMethod, accessDenied);
        Client client;
        client.manager->requestLocation();
        QTRY_COMPARE(client.failures.size(), 1);
        m_geoClue->answerWith(startMethod, {});
        authorize(client);
        m_geoClue->tellLocation();
        QTRY_VERIFY(client.manager->location());
        QCOMPARE(client.updates.size(), 0);
    }

private:
    static inline const quint64 secondsAtStart = quint64(startOfTest.toSecsSinceEpoch());

    /// An invalid value takes the property away.
    void putInLocation(const QString &name, const QVariant &value)
    {
        m_geoClue->location.remove(name);
        if (value.isValid())
            m_geoClue->location.insert(name, value);
    }

    /// Asks for a fix, and waits until the client has read one that is none.
    void tellInVain(Client &client)
    {
        authorize(client);
        client.manager->requestLocation();
        m_geoClue->tellLocation();
        QTRY_COMPARE(m_geoClue->count(getAll), 1);
        QVERIFY(settle());
    }
};

MOORLINE_TEST(GeoCluePositionTest);

#include "GeoCluePositionTest.moc"
