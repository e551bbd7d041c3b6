#include "GeoClueTestCase.h"

#include <QElapsedTimer>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class GeoCluePermissionTest final : public GeoClueTestCase {
    Q_OBJECT
private Q_SLOTS:
    void nothingIsAskedUnprompted()
    {
        const Client client;
        QVERIFY(settle());
        QCOMPARE(client.state(), open);
        QVERIFY(!client.manager->location());
        QVERIFY(m_geoClue->calls().isEmpty());
        QCOMPARE(client.changes.size(), 0);
    }

    void constructionDoesNotWaitForTheService()
    {
        // The service answers on this very thread: whoever waits for it waits until the bus gives up.
        QElapsedTimer watch;
        watch.start();
        Client client;
        client.manager->requestLocation();
        client.manager.reset();
        QVERIFY(watch.elapsed() < 2000);
    }

    void permissionIsGiven()
    {
        Client client;
        authorize(client);
        QCOMPARE(client.changes.size(), 1);
        QVERIFY(m_geoClue->isTracking());
    }

    void theProgramIsIntroducedBeforeItStarts()
    {
        Client client;
        authorize(client);
        QCOMPARE(m_geoClue->calls(),
            (QStringList{getClient, QStringLiteral("Set DesktopId"), QStringLiteral("Set RequestedAccuracyLevel"),
                startMethod}));
        QCOMPARE(m_geoClue->clientProperties(),
            (QVariantMap{{QStringLiteral("DesktopId"), desktopId}, {QStringLiteral("RequestedAccuracyLevel"), 4U}}));
    }

    void aRefusalIsADenial()
    {
        Client client;
        refuse(client);
        QCOMPARE(client.changes.size(), 1);
        QTRY_VERIFY(!m_geoClue->hasClient());
    }

    void everyDecisionIsToldAlsoTheSameAgain()
    {
        Client client;
        QSignalSpy answers(client.manager.get(), &LocationManager::didAnswerRequest);
        refuse(client);
        QCOMPARE(answers.size(), 1);
        client.manager->requestWhenInUseAuthorization();
        QTRY_COMPARE(answers.size(), 2);
        QCOMPARE(client.changes.size(), 1);
    }

    void aRefusalIsForgottenWhenLocationIsSwitchedOn()
    {
        Client client;
        refuse(client);
        m_geoClue->tellProperty(QStringLiteral("AvailableAccuracyLevel"), 0U);
        m_geoClue->tellProperty(QStringLiteral("InUse"), true);
        m_geoClue->tellProperty(QStringLiteral("AvailableAccuracyLevel"), QStringLiteral("4"));
        QVERIFY(settle());
        QCOMPARE(client.state(), denied);
        m_geoClue->tellProperty(QStringLiteral("AvailableAccuracyLevel"), 4U);
        QTRY_COMPARE(client.state(), open);
        QCOMPARE(client.changes.size(), 2);
    }

    void aPermissionStaysWhenLocationChanges()
    {
        Client client;
        authorize(client);
        receiveFirstFix(client);
        m_geoClue->tellProperty(QStringLiteral("AvailableAccuracyLevel"), 4U);
        QVERIFY(settle());
        QCOMPARE(client.state(), authorized);
    }

    void aPlaceMayBeWantedExactly()
    {
        Client client;
        client.manager->setDesiredAccuracy(LocationAccuracy::exact);
        authorize(client);
        QCOMPARE(m_geoClue->clientProperties().value(QStringLiteral("RequestedAccuracyLevel")), QVariant(8U));
    }

    void whatTheBusForbidsIsRestricted_data()
    {
        QTest::addColumn<QString>("method");
        QTest::newRow("getting a client") << getClient;
        QTest::newRow("setting it up") << set;
    }

    void whatTheBusForbidsIsRestricted()
    {
        QFETCH(QString, method);
        m_geoClue->fail(method, accessDenied);
        Client client;
        ask(client, restricted);
        QCOMPARE(client.changes.size(), 1);
    }

    void withoutTheServiceLocationIsOff()
    {
        m_geoClue->stop();
        Client client;
        ask(client, switchedOff);
        QCOMPARE(client.changes.size(), 1);
    }

    void withoutASystemBusLocationIsOff_data()
    {
        QTest::addColumn<QDBusConnection>("bus");
        QTest::newRow("nothing listens") << QDBusConnection::connectToBus(
            QStringLiteral("unix:path=/nowhere/bus"), QStringLiteral("nowhere"));
        QTest::newRow("never connected") << QDBusConnection(QStringLiteral("no such connection"));
    }

    void withoutASystemBusLocationIsOff()
    {
        QFETCH(QDBusConnection, bus);
        Client client(bus);
        QCOMPARE(client.state(), switchedOff);
        client.manager->requestLocation();
        QCOMPARE(client.failures.size(), 0);
        QTRY_COMPARE(client.failures.size(), 1);
        QCOMPARE(client.state(), switchedOff);
        QCOMPARE(client.changes.size(), 1);
    }

    void aQuestionWaitsForTheBus()
    {
        Client client(std::nullopt);
        client.manager->requestWhenInUseAuthorization();
        QCOMPARE(client.state(), open);
        client.bus.adopt(QDBusConnection::systemBus());
        QTRY_COMPARE(client.state(), authorized);
    }

    void aRequestWaitsForTheBus()
    {
        Client client(std::nullopt);
        client.manager->requestLocation();
        client.bus.adopt(QDBusConnection::systemBus());
        QTRY_VERIFY(m_geoClue->isTracking());
        tellFirstFix(client);
    }

    void aBusThatNobodyWaitedForBringsNoQuestion()
    {
        Client client(std::nullopt);
        client.bus.adopt(QDBusConnection::systemBus());
        QVERIFY(settle());
        QVERIFY(!m_geoClue->hasClient());
        QCOMPARE(client.changes.size(), 0);
    }

    void anUnknownErrorIsADenial()
    {
        m_geoClue->fail(startMethod, QStringLiteral("com.example.Odd"));
        Client client;
        ask(client, denied);
    }

    void aStrangeClientIsADenial_data()
    {
        QTest::addColumn<QVariantList>("answer");
        QTest::newRow("nothing") << QVariantList{};
        QTest::newRow("a text") << QVariantList{QStringLiteral("/org/freedesktop/GeoClue2/Client/1")};
        QTest::newRow("a number") << QVariantList{7};
        QTest::newRow("no object") << QVariantList{QVariant::fromValue(QDBusObjectPath(QStringLiteral("/")))};
    }

    void aStrangeClientIsADenial()
    {
        QFETCH(QVariantList, answer);
        m_geoClue->answerWith(getClient, answer);
        Client client;
        ask(client, denied);
        QVERIFY(settle());
        QCOMPARE(m_geoClue->calls(), QStringList{getClient});
    }

    void aSilentServiceIsAskedAgain_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<std::chrono::seconds>("limit");
        QTest::newRow("no client") << getClient << 10s;
        QTest::newRow("no setting") << set << 10s;
        QTest::newRow("no decision") << startMethod << 120s;
    }

    void aSilentServiceIsAskedAgain()
    {
        QFETCH(QString, method);
        QFETCH(std::chrono::seconds, limit);
        m_geoClue->hold(method);
        Client client;
        client.manager->requestLocation();
        QVERIFY(settle());
        client.clock.advance(limit - 1s);
        QCOMPARE(client.failures.size(), 0);
        client.clock.advance(1s);
        QCOMPARE(client.failures.size(), 1);
        QCOMPARE(client.state(), open);
        QCOMPARE(client.changes.size(), 0);
        QCOMPARE(client.clock.runningTimers(), 0);

        m_geoClue->release(method);
        QVERIFY(settle());
        QCOMPARE(client.state(), open);
        authorize(client);
    }

    void theUserHasTwoMinutesToDecide()
    {
        m_geoClue->hold(startMethod);
        Client client;
        client.manager->requestWhenInUseAuthorization();
        QVERIFY(settle());
        client.clock.advance(119s);
        m_geoClue->release(startMethod);
        QTRY_COMPARE(client.state(), authorized);
    }

    void everyStepHasItsOwnLimit()
    {
        for (const QString &method : {getClient, set, startMethod})
            m_geoClue->hold(method);
        Client client;
        client.manager->requestLocation();
        answerAfter(client, getClient, 9s);
        answerAfter(client, set, 9s);
        answerAfter(client, set, 9s);
        answerAfter(client, startMethod, 119s);
        client.clock.advance(29s);
        QCOMPARE(client.failures.size(), 0);
        tellFirstFix(client);
    }

    void askingTwiceForTheSamePermissionIsNoNews()
    {
        Client client;
        authorize(client);
        receiveFirstFix(client);
        client.manager->requestWhenInUseAuthorization();
        QTRY_COMPARE(m_geoClue->count(startMethod), 2);
        QVERIFY(settle());
        QCOMPARE(client.changes.size(), 1);
    }

private:
    /// The service takes that long for the call that is held back, and holds back the next of its kind as well.
    void answerAfter(Client &client, const QString &held, std::chrono::seconds delay)
    {
        QVERIFY(settle());
        client.clock.advance(delay);
        m_geoClue->release(held);
        m_geoClue->hold(held);
        QVERIFY(settle());
    }
};

MOORLINE_TEST(GeoCluePermissionTest);

#include "GeoCluePermissionTest.moc"
