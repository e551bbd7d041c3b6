#include "weather/LocationStatus.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using Availability = LocationService::Availability;

class LocationStatusTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyStateHasItsWords_data()
    {
        QTest::addColumn<Availability>("availability");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("button");
        const auto row = [](Availability availability, const char *name, const char *status, const char *button) {
            QTest::newRow(name) << availability << QString::fromUtf8(name) << QString::fromUtf8(status)
                                << QString::fromUtf8(button);
        };
        row(Availability::notDetermined, "notDetermined", "Not yet asked.", "Allow Location Access");
        row(Availability::authorized, "authorized", "Using Location Services.", "");
        row(Availability::denied, "denied",
            "Denied — falling back to your IP address. Enable it in System Settings › Privacy & Security › Location "
            "Services.",
            "Open Location Settings");
        row(Availability::restricted, "restricted", "Restricted by policy — falling back to your IP address.",
            "Open Location Settings");
        row(Availability::servicesOff, "servicesOff",
            "Location Services is switched off system-wide — falling back to your IP address.",
            "Open Location Settings");
    }
    void everyStateHasItsWords()
    {
        QFETCH(const Availability, availability);
        QTEST(caseName(availability), "name");
        QTEST(statusText(availability), "status");
        QTEST(title(remedy(availability)), "button");
    }

    void onlyAnUndecidedPermissionIsAskedFor()
    {
        QCOMPARE(remedy(Availability::notDetermined), LocationRemedy::askForPermission);
        QCOMPARE(remedy(Availability::authorized), LocationRemedy::none);
        for (const auto refused : {Availability::denied, Availability::restricted, Availability::servicesOff})
            QCOMPARE(remedy(refused), LocationRemedy::openSystemSettings);
    }
};

MOORLINE_TEST(LocationStatusTest);

#include "LocationStatusTest.moc"
