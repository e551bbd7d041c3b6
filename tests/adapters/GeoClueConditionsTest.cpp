#include "platform/linux/location/GeoClueConditions.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

class GeoClueConditionsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyConditionHasItsMeaning_data()
    {
        using Condition = GeoClueCondition;
        using Authorization = LocationAuthorization;
        QTest::addColumn<Condition>("condition");
        QTest::addColumn<GeoClueMeaning>("meaning");

        QTest::newRow("not asked") << Condition::notAsked << GeoClueMeaning{true, Authorization::notDetermined};
        QTest::newRow("granted") << Condition::granted << GeoClueMeaning{true, Authorization::authorized};
        QTest::newRow("refused") << Condition::refused << GeoClueMeaning{true, Authorization::denied};
        QTest::newRow("forbidden") << Condition::forbidden << GeoClueMeaning{true, Authorization::restricted};
        QTest::newRow("absent") << Condition::absent << GeoClueMeaning{false, Authorization::notDetermined};
        QTest::newRow("silent") << Condition::silent << GeoClueMeaning{true, Authorization::notDetermined};
        QTest::newRow("broken") << Condition::broken << GeoClueMeaning{true, Authorization::denied};
    }

    void everyConditionHasItsMeaning()
    {
        QFETCH(GeoClueCondition, condition);
        QTEST(meaningOf(condition), "meaning");
    }

    void everyErrorHasItsCondition_data()
    {
        using Condition = GeoClueCondition;
        QTest::addColumn<QString>("error");
        QTest::addColumn<Condition>("findingService");
        QTest::addColumn<Condition>("settingUp");
        QTest::addColumn<Condition>("starting");

        const auto row = [](const char *error, Condition findingService, Condition settingUp, Condition starting) {
            QTest::newRow(error) << QString::fromLatin1(error) << findingService << settingUp << starting;
        };
        row("org.freedesktop.DBus.Error.AccessDenied", Condition::forbidden, Condition::forbidden, Condition::refused);
        for (const char *error : {"org.freedesktop.DBus.Error.NoReply", "org.freedesktop.DBus.Error.Timeout",
                 "org.freedesktop.DBus.Error.TimedOut", "org.freedesktop.DBus.Error.Spawn.ExecFailed",
                 "org.freedesktop.systemd1.TransactionIsDestructive"})
            row(error, Condition::silent, Condition::silent, Condition::silent);
        for (const char *error :
            {"org.freedesktop.DBus.Error.ServiceUnknown", "org.freedesktop.DBus.Error.NameHasNoOwner",
                "org.freedesktop.DBus.Error.Spawn.ServiceNotFound", "org.freedesktop.DBus.Error.FileNotFound",
                "org.freedesktop.DBus.Error.NoServer", "org.freedesktop.DBus.Error.Disconnected",
                "org.freedesktop.systemd1.NoSuchUnit", "org.freedesktop.systemd1.UnitMasked"})
            row(error, Condition::absent, Condition::silent, Condition::silent);
        for (const char *error :
            {"org.freedesktop.DBus.Error.Failed", "org.freedesktop.DBus.Error.UnknownMethod", "com.example.Odd", ""})
            row(error, Condition::broken, Condition::broken, Condition::broken);
    }

    void everyErrorHasItsCondition()
    {
        QFETCH(QString, error);
        QTEST(conditionOf(error, GeoClueStep::findingService), "findingService");
        QTEST(conditionOf(error, GeoClueStep::settingUp), "settingUp");
        QTEST(conditionOf(error, GeoClueStep::starting), "starting");
    }
};

MOORLINE_TEST(GeoClueConditionsTest);

#include "GeoClueConditionsTest.moc"
