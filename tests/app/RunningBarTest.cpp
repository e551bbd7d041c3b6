#include "app/Program.h"

#include "app/BarWidgets.h"
#include "app/Services.h"
#include "apps/AppShortcutsWidget.h"
#include "apps/RecentAppsWidget.h"
#include "dock/DockBarView.h"
#include "dock/DockHostingView.h"
#include "dock/DockPanel.h"
#include "files/PinnedItemsWidget.h"
#include "harness/TestCase.h"
#include "music/MusicWidget.h"
#include "time/CalendarWidget.h"
#include "time/ClockWidget.h"
#include "time/MonthCounterWidget.h"
#include "weather/ForecastWidget.h"
#include "weather/WeatherWidget.h"

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

/// What the bar of a running program shows.
class RunningBarTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
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
        QVERIFY(isA.operator()<PinnedItemsWidget>(WidgetKind::pinnedItems));
        QVERIFY(isA.operator()<MusicWidget>(WidgetKind::music));
    }

    void theBarShowsTheDownloadsAndTheTrash()
    {
        Program program(plan(RunMode::normal));
        launch(program);
        showWidgets(program, {WidgetKind::clock, WidgetKind::pinnedItems});
        QCOMPARE(hostingView(program).bar().row(), (QList{WidgetKind::clock, WidgetKind::pinnedItems}));
        const PinnedItemsWidget *files = nullptr;
        for (QGraphicsItem *item : hostingView(program).scene()->items()) {
            if (const auto *found = dynamic_cast<PinnedItemsWidget *>(item))
                files = found;
        }
        QVERIFY(files && files->downloads() && files->trash());
        QCOMPARE(program.platform.trashBin.looks.size(), 1);
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

MOORLINE_TEST(RunningBarTest);

#include "RunningBarTest.moc"
