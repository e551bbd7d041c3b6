#pragma once

#include "GeoClueDouble.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/location/GeoClueLocationManager.h"

#include <QDBusPendingCallWatcher>
#include <QSignalSpy>

namespace moorline::test {

/// The base of tests that ask a GeoClue on a bus of their own under virtual time.
class GeoClueTestCase : public TestCase {
    Q_OBJECT
protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_geoClue = std::make_unique<GeoClueDouble>();
        m_geoClue->start();
    }

    void cleanup()
    {
        m_geoClue.reset();
        TestCase::cleanup();
    }

protected:
    static inline const QString desktopId = QStringLiteral("app.moorline.Moorline");
    static inline const QString getClient = QStringLiteral("GetClient");
    static inline const QString set = QStringLiteral("Set");
    static inline const QString getAll = QStringLiteral("GetAll");
    static inline const QString startMethod = QStringLiteral("Start");
    static inline const QString stopMethod = QStringLiteral("Stop");
    static inline const QString accessDenied = QStringLiteral("org.freedesktop.DBus.Error.AccessDenied");

    static inline const QDateTime startOfTest{QDate(2025, 3, 4), QTime(13, 5, 9)};

    static constexpr GeoClueMeaning open{true, LocationAuthorization::notDetermined};
    static constexpr GeoClueMeaning authorized{true, LocationAuthorization::authorized};
    static constexpr GeoClueMeaning denied{true, LocationAuthorization::denied};
    static constexpr GeoClueMeaning restricted{true, LocationAuthorization::restricted};
    static constexpr GeoClueMeaning switchedOff{false, LocationAuthorization::notDetermined};

    /// A manager, and what it said since it was made.
    struct Client {
        explicit Client(const std::optional<QDBusConnection> &connection = QDBusConnection::systemBus())
        {
            if (connection)
                bus.adopt(*connection);
        }

        GeoClueMeaning state() const { return {manager->locationServicesEnabled(), manager->authorizationStatus()}; }
        PositionFix onlyUpdate() const { return updates.value(0).value(0).value<QList<PositionFix>>().value(0); }

        FakeClock clock{startOfTest};
        Bus bus;
        std::unique_ptr<GeoClueLocationManager> manager =
            std::make_unique<GeoClueLocationManager>(bus, clock, desktopId);
        QSignalSpy changes{manager.get(), &LocationManager::didChangeAuthorization};
        QSignalSpy updates{manager.get(), &LocationManager::didUpdateLocations};
        QSignalSpy failures{manager.get(), &LocationManager::didFail};
    };

    /// Waits until every message has been dealt with on both sides, and those that they gave rise to.
    [[nodiscard]] static bool settle()
    {
        const auto echo = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.GeoClue2"),
            QStringLiteral("/org/freedesktop/GeoClue2"), QStringLiteral("org.freedesktop.DBus.Peer"),
            QStringLiteral("Ping"));
        for (int round = 0; round < 10; ++round) {
            const QDBusPendingCallWatcher watcher(QDBusConnection::systemBus().asyncCall(echo));
            QSignalSpy answered(&watcher, &QDBusPendingCallWatcher::finished);
            if (!answered.wait())
                return false;
        }
        return true;
    }

    /// Asks for permission, and waits for that answer.
    static void ask(Client &client, const GeoClueMeaning &answer)
    {
        client.manager->requestWhenInUseAuthorization();
        QTRY_COMPARE(client.state(), answer);
    }

    static void authorize(Client &client) { ask(client, authorized); }

    /// Asks for permission, which the service does not give from now on.
    void refuse(Client &client)
    {
        m_geoClue->fail(startMethod, accessDenied);
        ask(client, denied);
    }

    /// Asks for a fix, and waits until the service looks for one.
    void requestFix(Client &client)
    {
        client.manager->requestLocation();
        QTRY_VERIFY(m_geoClue->isTracking());
    }

    /// Waits until the client has told the first fix.
    void tellFirstFix(Client &client)
    {
        m_geoClue->tellLocation();
        QTRY_COMPARE(client.updates.size(), 1);
    }

    /// Asks for the first fix, and waits until the client has told it.
    void receiveFirstFix(Client &client)
    {
        requestFix(client);
        tellFirstFix(client);
    }

    std::unique_ptr<GeoClueDouble> m_geoClue;
};

} // namespace moorline::test
