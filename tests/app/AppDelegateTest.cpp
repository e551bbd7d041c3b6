#include "app/Program.h"

#include "app/Services.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class AppDelegateTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whereThePlatformCannotChangeTheDockScriptsDo()
    {
        FakePlatform platform;
        FakeSystemDockControl scripted;
        QVERIFY(&dockControl(platform.ports, scripted) == &platform.systemDockControl);
        platform.ports.systemDockControl.reset();
        QVERIFY(&dockControl(platform.ports, scripted) == &scripted);
    }

    void aNormalRunShowsThePanelAndTheStatusItem()
    {
        Program program(plan(RunMode::normal));
        launch(program);
        QVERIFY(program.delegate.windowController().panel());
        QVERIFY(program.platform.statusBar.item);
        program.platform.clock.advance(60s);
        QCOMPARE(program.terminations, 0);
        QVERIFY(program.printed.isEmpty());
    }

    void theWeatherIsAskedForAtTheStart()
    {
        Program program(plan(RunMode::normal));
        launch(program);
        QCOMPARE(program.platform.httpClient.requested, QList<QUrl>{QUrl(QStringLiteral("https://ipwho.is/"))});
    }

    void theWeatherIsAskedForAgainWhenThereIsReason_data()
    {
        QTest::addColumn<std::function<void(Program &)>>("happen");
        const auto row = [](const char *name, const std::function<void(Program &)> &happen) {
            QTest::newRow(name) << happen;
        };
        row("the network is back", [](Program &program) {
            program.platform.network.change(false);
            program.platform.network.change(true);
            // The second change is one that was not told.
            program.platform.clock.advance(4s);
        });
        row("the machine woke", [](Program &program) { Q_EMIT program.platform.power.didWake(); });
        row("ten minutes went by", [](Program &program) { program.platform.clock.advance(600s); });
        row("the settings changed", [](Program &program) {
            program.delegate.store().pin({QUrl::fromLocalFile(QStringLiteral("/tmp/notes.txt"))});
        });
    }
    void theWeatherIsAskedForAgainWhenThereIsReason()
    {
        QFETCH(const std::function<void(Program &)>, happen);
        Program program(plan(RunMode::normal));
        launch(program);
        happen(program);
        QCOMPARE(program.platform.httpClient.requested.size(), 2);
        QCOMPARE(program.platform.httpClient.running(), 1);
    }

    void whoWakesWithoutANetworkWaitsForIt()
    {
        Program program(plan(RunMode::normal));
        launch(program);
        program.platform.network.change(false);
        Q_EMIT program.platform.power.didWake();
        QCOMPARE(program.platform.httpClient.requested.size(), 1);
        program.platform.network.change(true);
        program.platform.clock.advance(4s);
        QCOMPARE(program.platform.httpClient.requested.size(), 2);
    }

    void aServerThatMayBeNearIsAskedOnWakingWithoutANetwork()
    {
        RunPlan near = plan(RunMode::normal);
        near.weatherOrigin = QUrl(QStringLiteral("http://localhost:8080"));
        Program program(near);
        launch(program);
        program.platform.network.isUp = false;
        Q_EMIT program.platform.power.didWake();
        QCOMPARE(program.platform.httpClient.requested.size(), 2);
    }

    void aPermissionThatIsGivenIsUsedAtOnce()
    {
        Program program(plan(RunMode::normal));
        launch(program);
        QCOMPARE(program.platform.locationManager.timesPermissionAsked, 1);
        program.platform.locationManager.decide(LocationAuthorization::authorized);
        QCOMPARE(program.platform.locationManager.timesLocationAsked, 1);
        QCOMPARE(program.platform.httpClient.running(), 0);
    }

    void aDroppedApplicationBecomesAShortcut()
    {
        Program program(plan(RunMode::normal));
        program.platform.appBundles.bundles[QStringLiteral("/Applications/Notes.app")] = {
            QStringLiteral("org.example.notes"), QStringLiteral("Notes"), std::nullopt};
        program.delegate.store().pin({QUrl::fromLocalFile(QStringLiteral("/Applications/Notes.app"))});
        QCOMPARE(program.delegate.store().settings().appShortcuts.last().name, QStringLiteral("Notes"));
    }
};

MOORLINE_TEST(AppDelegateTest);

#include "AppDelegateTest.moc"
