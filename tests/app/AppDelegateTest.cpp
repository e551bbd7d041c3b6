#include "app/Program.h"

#include "app/BarWidgets.h"
#include "app/Services.h"
#include "apps/AppShortcutsWidget.h"
#include "apps/RecentAppsWidget.h"
#include "dock/DockBarView.h"
#include "dock/DockHostingView.h"
#include "dock/DockPanel.h"
#include "harness/TestCase.h"
#include "time/CalendarWidget.h"
#include "time/ClockWidget.h"
#include "time/MonthCounterWidget.h"
#include "weather/ForecastWidget.h"
#include "weather/WeatherWidget.h"

#include <QImage>
#include <QRegularExpression>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const AppShortcut notes{
    QStringLiteral("/Applications/Notes.app"), QStringLiteral("org.example.notes"), QStringLiteral("Notes")};
const QString mailPath = QStringLiteral("/Applications/Mail.app");

/// The bar as it stands in the panel.
DockHostingView &hostingView(const Program &program)
{
    return dynamic_cast<DockHostingView &>(*program.delegate.windowController().panel()->content());
}

void showWidgets(Program &program, const QList<WidgetKind> &kinds)
{
    program.delegate.store().change([&kinds](Settings &settings) {
        settings.enabledWidgets = kinds;
        settings.useCurrentLocation = false;
    });
}

class PaintCounter final : public QObject {
public:
    [[nodiscard]] int count() const { return m_count; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_count = 0;
};

} // namespace

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

    void aPreviewWaitsForTheWeatherToo()
    {
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = QStringLiteral("/nowhere/at/all.png");
        preview.weatherOrigin = QUrl(QStringLiteral("http://localhost:8080"));
        Program program(preview);
        program.delegate.applicationDidFinishLaunching();
        QCOMPARE(program.platform.httpClient.requested, QList<QUrl>{QUrl(QStringLiteral("http://localhost:8080/"))});
    }

    void anImportAsksForNoWeather()
    {
        Program program(plan(RunMode::importDock));
        program.delegate.applicationDidFinishLaunching();
        QVERIFY(program.platform.httpClient.requested.isEmpty());
    }

    void theImportPrintsItsReportAndEnds()
    {
        Program program(plan(RunMode::importDock));
        program.platform.preferences.domains[QStringLiteral("com.apple.dock")] = {{QStringLiteral("persistent-apps"),
            QVariantList{QVariantMap{
                {QStringLiteral("tile-data"), QVariantMap{{QStringLiteral("file-label"), QStringLiteral("Gone")}}}}}}};
        program.delegate.applicationDidFinishLaunching();
        QCOMPARE(program.printed,
            (QStringList{QStringLiteral("skipped (not found): Gone"), QStringLiteral("total pinned apps now: 1")}));
        QCOMPARE(program.terminations, 1);
        QVERIFY(!program.delegate.windowController().panel());
        QVERIFY(!program.platform.statusBar.item);
        QCOMPARE(program.platform.clock.runningTimers(), 0);
    }

    void thePreviewIsDrawnAfterSixSecondsAndEnds()
    {
        QTemporaryDir folder;
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = folder.filePath(QStringLiteral("preview.png"));
        Program program(preview);
        program.delegate.applicationDidFinishLaunching();
        program.platform.clock.advance(5900ms);
        QCOMPARE(program.terminations, 0);
        QTest::ignoreMessage(
            QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote preview to ") + *preview.previewPath));
        program.platform.clock.advance(100ms);
        QCOMPARE(program.terminations, 1);
        QCOMPARE(QImage(*preview.previewPath).size(), QSize(3200, 276));
        QVERIFY(!program.delegate.windowController().panel());
        QVERIFY(!program.platform.statusBar.item);
    }

    void aPreviewThatFailsEndsToo()
    {
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = QStringLiteral("/nowhere/at/all.png");
        Program program(preview);
        program.delegate.applicationDidFinishLaunching();
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("^Moorline: could not write preview: .+")));
        program.platform.clock.advance(6s);
        QCOMPARE(program.terminations, 1);
    }

    void theSnapshotIsTakenAfterEightSecondsAndEnds()
    {
        QTemporaryDir folder;
        RunPlan snapshot = plan(RunMode::normal);
        snapshot.snapshotPath = folder.filePath(QStringLiteral("bar.png"));
        Program program(snapshot);
        program.delegate.applicationDidFinishLaunching();
        program.delegate.windowController().panel()->show();
        program.platform.clock.advance(7900ms);
        QCOMPARE(program.terminations, 0);
        QTest::ignoreMessage(
            QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote live snapshot to ") + *snapshot.snapshotPath));
        program.platform.clock.advance(100ms);
        QCOMPARE(program.terminations, 1);
        QVERIFY(!QImage(*snapshot.snapshotPath).isNull());
    }

    void aSnapshotThatFailsEndsToo()
    {
        RunPlan snapshot = plan(RunMode::normal);
        snapshot.snapshotPath = QStringLiteral("/nowhere/at/all.png");
        Program program(snapshot);
        program.delegate.applicationDidFinishLaunching();
        program.delegate.windowController().panel()->show();
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("^Moorline: could not write snapshot: .+")));
        program.platform.clock.advance(8s);
        QCOMPARE(program.terminations, 1);
    }

    void aDroppedApplicationBecomesAShortcut()
    {
        Program program(plan(RunMode::normal));
        program.platform.appBundles.bundles[QStringLiteral("/Applications/Notes.app")] = {
            QStringLiteral("org.example.notes"), QStringLiteral("Notes"), std::nullopt};
        program.delegate.store().pin({QUrl::fromLocalFile(QStringLiteral("/Applications/Notes.app"))});
        QCOMPARE(program.delegate.store().settings().appShortcuts.last().name, QStringLiteral("Notes"));
    }

    void everyKindThereIsAWidgetForHasItsOwn()
    {
        Program program(plan(RunMode::normal));
        Services services(program.platform.ports, plan(RunMode::normal));
        const auto isA = [&services]<typename Widget>(WidgetKind kind) {
            return dynamic_cast<Widget *>(makeBarWidget(kind, services).get()) != nullptr;
        };
        QVERIFY(isA.operator()<ClockWidget>(WidgetKind::clock));
        QVERIFY(isA.operator()<CalendarWidget>(WidgetKind::calendar));
        QVERIFY(isA.operator()<MonthCounterWidget>(WidgetKind::monthCounter));
        QVERIFY(isA.operator()<WeatherWidget>(WidgetKind::weather));
        QVERIFY(isA.operator()<ForecastWidget>(WidgetKind::forecast));
        QVERIFY(isA.operator()<AppShortcutsWidget>(WidgetKind::appShortcut));
        QVERIFY(isA.operator()<RecentAppsWidget>(WidgetKind::recentApps));
        for (const auto kind : {WidgetKind::music, WidgetKind::pinnedItems})
            QVERIFY(!makeBarWidget(kind, services));
    }

    void theBarShowsIconsAndLaunchesTheirApplications()
    {
        Program program(plan(RunMode::normal));
        program.platform.preferences.setDock(QStringLiteral("bottom"), true);
        program.delegate.store().change([](Settings &settings) { settings.appShortcuts = {notes}; });
        launch(program);
        // A bar of an icon alone would be narrower than a panel can be.
        showWidgets(program, {WidgetKind::clock, WidgetKind::appShortcut, WidgetKind::recentApps});
        QCOMPARE(hostingView(program).bar().row(), (QList{WidgetKind::clock, WidgetKind::appShortcut}));
        const qreal alone = program.delegate.windowController().contentWidth();

        for (QGraphicsItem *item : hostingView(program).scene()->items()) {
            if (auto *icon = dynamic_cast<AppShortcutButton *>(item))
                icon->press();
        }
        QCOMPARE(program.platform.workspace.openings.size(), 1);
        QCOMPARE(program.platform.workspace.openings.first().path, notes.path);

        program.platform.appBundles.bundles[mailPath] = {.identifier = QStringLiteral("org.example.mail")};
        program.platform.workspace.bringForward(
            program.platform.workspace.launch(QStringLiteral("org.example.mail"), mailPath));
        QCOMPARE(hostingView(program).bar().row(),
            (QList{WidgetKind::clock, WidgetKind::appShortcut, WidgetKind::recentApps}));
        // Another icon and the divider before it.
        QCOMPARE(program.delegate.windowController().contentWidth(), alone + 46 + 29);
    }

    void replacedApplicationsAreAskedForTheirIconsAgain()
    {
        Program program(plan(RunMode::normal));
        program.delegate.store().change([](Settings &settings) { settings.appShortcuts = {notes}; });
        launch(program);
        showWidgets(program, {WidgetKind::appShortcut});
        program.delegate.windowController().panel()->show();
        QTRY_COMPARE(program.platform.icons.requested.size(), 1);
        QVERIFY(program.platform.icons.answer(Qt::red));
        // As every system tells it.
        program.platform.appBundles.change();
        program.platform.icons.changeTheme();
        QTRY_COMPARE(program.platform.icons.requested.size(), 2);
    }

    void aPreviewShowsIcons()
    {
        QTemporaryDir folder;
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = folder.filePath(QStringLiteral("preview.png"));
        Program program(preview);
        program.delegate.store().change([](Settings &settings) {
            settings.enabledWidgets = {WidgetKind::appShortcut};
            settings.appShortcuts = {notes};
        });
        program.delegate.applicationDidFinishLaunching();
        QCOMPARE(program.platform.icons.requested, (QList{IconRequest{IconKind::application, notes.path, 46, 2}}));
        QVERIFY(program.platform.icons.answer(Qt::red));
        QTest::ignoreMessage(
            QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote preview to ") + *preview.previewPath));
        program.platform.clock.advance(6s);
        const QImage image(*preview.previewPath);
        // The row's middle; the icon stands a little above it.
        QCOMPARE(image.pixelColor(image.width() / 2 - 4, image.height() / 2 - 6), QColor(Qt::red));
    }

    void theBarShowsTheWeather()
    {
        Program program(plan(RunMode::normal));
        // The nudge would be wider than both widgets.
        program.platform.preferences.setDock(QStringLiteral("bottom"), true);
        launch(program);
        showWidgets(program, {WidgetKind::weather, WidgetKind::forecast, WidgetKind::music});
        QCOMPARE(hostingView(program).bar().row(), (QList<WidgetKind>{WidgetKind::weather, WidgetKind::forecast}));
        const qreal loading = program.delegate.windowController().contentWidth();
        QVERIFY(program.platform.httpClient.answerJson(R"({"current": {"temperature_2m": 1, "relative_humidity_2m": 2,
            "apparent_temperature": 3, "is_day": 1, "weather_code": 0, "wind_speed_10m": 4},
            "daily": {"time": ["2025-03-04"]}})"));
        QVERIFY(program.delegate.windowController().contentWidth() > loading);
    }

    void aClockWithoutSecondsPaintsOnceAMinute()
    {
        Program program(plan(RunMode::normal));
        launch(program);
        showWidgets(program, {WidgetKind::clock, WidgetKind::calendar});
        program.delegate.windowController().panel()->show();
        QCoreApplication::processEvents();
        PaintCounter paints;
        hostingView(program).viewport()->installEventFilter(&paints);
        for (int second = 0; second < 600; ++second) {
            program.platform.clock.advance(1s);
            QCoreApplication::processEvents();
        }
        QCOMPARE(paints.count(), 10);
    }
};

MOORLINE_TEST(AppDelegateTest);

#include "AppDelegateTest.moc"
