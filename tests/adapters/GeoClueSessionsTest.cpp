#include "GeoClueTestCase.h"

#include <QDir>
#include <QFile>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class GeoClueSessionsTest final : public GeoClueTestCase {
    Q_OBJECT
private Q_SLOTS:
    void requestsShareOneSession()
    {
        Client client;
        client.manager->requestLocation();
        requestFix(client);
        receiveFirstFix(client);
        QVERIFY(settle());
        QCOMPARE(client.updates.size(), 1);
        QCOMPARE(client.failures.size(), 0);
        QCOMPARE(m_geoClue->count(getClient), 1);
    }

    void aRequestJoinsTheQuestionForPermission()
    {
        Client client;
        requestAgainAfter(client, &LocationManager::didChangeAuthorization);
        authorize(client);
        tellFirstFix(client);
        QCOMPARE(m_geoClue->count(getClient), 1);
    }

    void aRequestMadeWithinAnAnswerIsAnotherOne()
    {
        Client client;
        authorize(client);
        client.manager->requestLocation();
        const auto again = requestAgainAfter(client, &LocationManager::didUpdateLocations);
        m_geoClue->tellLocation();
        QTRY_COMPARE(m_geoClue->count(startMethod), 2);
        QVERIFY(settle());
        QCOMPARE(client.updates.size(), 1);
        disconnect(again);
        m_geoClue->tellLocation();
        QTRY_COMPARE(client.updates.size(), 2);
    }

    void aServiceThatEndsFailsTheRequestAndKeepsThePermission_data() { everyCall(); }

    void aServiceThatEndsFailsTheRequestAndKeepsThePermission()
    {
        QFETCH(QString, held);
        Client client;
        authorize(client);
        client.clock.advance(30s);
        requestUpTo(held, client);
        m_geoClue->stop();
        QTRY_COMPARE(client.failures.size(), 1);
        QCOMPARE(client.state(), authorized);

        m_geoClue->start();
        receiveFirstFix(client);
        QCOMPARE(client.failures.size(), 1);
        QCOMPARE(client.changes.size(), 1);
    }

    void aServiceThatEndsBetweenRequestsChangesNothing()
    {
        Client client;
        authorize(client);
        client.clock.advance(30s);
        m_geoClue->stop();
        m_geoClue->start();
        QVERIFY(settle());
        QCOMPARE(client.state(), authorized);
        receiveFirstFix(client);
        QCOMPARE(client.failures.size(), 0);
        QCOMPARE(client.changes.size(), 1);
    }

    void aServiceThatComesLaterIsAskedAgain()
    {
        m_geoClue->stop();
        Client client;
        ask(client, switchedOff);
        m_geoClue->start();
        QTRY_COMPARE(client.changes.size(), 2);
        QCOMPARE(client.state(), open);
        authorize(client);
    }

    void aServiceThatComesAgainIsAskedAgain()
    {
        Client client;
        refuse(client);
        m_geoClue->stop();
        QVERIFY(settle());
        QCOMPARE(client.state(), denied);
        m_geoClue->start();
        QTRY_COMPARE(client.state(), open);
        QCOMPARE(client.changes.size(), 2);
    }

    void aServiceThatIsStartedForAQuestionKeepsItsAnswer()
    {
        Client client;
        refuse(client);
        m_geoClue->stop();
        QVERIFY(settle());

        // The bus takes whoever gets the name for the program that it started.
        const QDir services(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/dbus-1/services"));
        QVERIFY(services.mkpath(QStringLiteral(".")));
        QFile file(services.filePath(QStringLiteral("org.freedesktop.GeoClue2.service")));
        const auto remove = qScopeGuard([&file] { file.remove(); });
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[D-BUS Service]\nName=org.freedesktop.GeoClue2\nExec=/bin/sleep 1\n");
        file.close();
        client.manager->requestLocation();
        m_geoClue->start();
        QTRY_COMPARE(client.failures.size(), 1);
        QCOMPARE(m_geoClue->count(startMethod), 2);
        QCOMPARE(client.state(), denied);
        QCOMPARE(client.changes.size(), 1);
    }

    void isDestroyedInTheMiddle_data() { everyCall(); }

    void isDestroyedInTheMiddle()
    {
        QFETCH(QString, held);
        Client client;
        requestUpTo(held, client);
        client.manager.reset();
        QCOMPARE(client.clock.runningTimers(), 0);
        m_geoClue->release(held);
        QVERIFY(settle());
        QVERIFY(!m_geoClue->isTracking());
        QCOMPARE(client.updates.size() + client.failures.size(), 0);
    }

    void isDestroyedByNewsOfItsPermission_data()
    {
        QTest::addColumn<bool>("isGiven");
        QTest::newRow("given") << true;
        QTest::newRow("refused") << false;
    }

    void isDestroyedByNewsOfItsPermission()
    {
        QFETCH(bool, isGiven);
        if (!isGiven)
            m_geoClue->fail(startMethod, accessDenied);
        Client client;
        destroyAfter(client, &LocationManager::didChangeAuthorization);
        client.manager->requestLocation();
        QTRY_VERIFY(!client.manager);
        QTRY_VERIFY(!m_geoClue->hasClient());
        QCOMPARE(client.failures.size(), 0);
    }

    void isDestroyedByItsFailure()
    {
        Client client;
        destroyAfter(client, &LocationManager::didFail);
        requestFix(client);
        m_geoClue->stop();
        QTRY_VERIFY(!client.manager);
        QVERIFY(settle());
    }

    void isDestroyedByItsFix()
    {
        Client client;
        destroyAfter(client, &LocationManager::didUpdateLocations);
        requestFix(client);
        m_geoClue->tellLocation();
        QTRY_VERIFY(!client.manager);
        QTRY_VERIFY(!m_geoClue->hasClient());
    }

private:
    static void everyCall()
    {
        QTest::addColumn<QString>("held");
        QTest::newRow("while it looks for a client") << getClient;
        QTest::newRow("while it is set up") << set;
        QTest::newRow("while it starts") << startMethod;
        QTest::newRow("while it is told the location") << getAll;
    }

    /// Asks for a fix and gets as far as that call, which has no answer yet.
    void requestUpTo(const QString &held, Client &client)
    {
        m_geoClue->hold(held);
        client.manager->requestLocation();
        QVERIFY(settle());
        m_geoClue->tellLocation();
        QVERIFY(settle());
    }

    template <typename Signal>
    QMetaObject::Connection requestAgainAfter(Client &client, Signal signal)
    {
        return connect(
            client.manager.get(), signal, client.manager.get(), [&client] { client.manager->requestLocation(); });
    }

    template <typename Signal>
    void destroyAfter(Client &client, Signal signal)
    {
        connect(client.manager.get(), signal, m_geoClue.get(), [&client] { client.manager.reset(); });
    }
};

MOORLINE_TEST(GeoClueSessionsTest);

#include "GeoClueSessionsTest.moc"
