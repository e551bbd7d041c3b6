#include "app/BarWidgets.h"
#include "app/Program.h"
#include "harness/TestCase.h"
#include "weather/ForecastWidget.h"
#include "weather/WeatherWidget.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QString mailPath = QStringLiteral("/Applications/Mail.app");
const QString gonePath = QStringLiteral("/Applications/Gone.app");
const QString postPath = QStringLiteral("/Users/me/Applications/Post.app");

QVariant tile(const QString &label, const QString &path)
{
    const QVariantMap file{{QStringLiteral("_CFURLString"), QUrl::fromLocalFile(path).toString()}};
    return QVariantMap{{QStringLiteral("tile-data"),
        QVariantMap{{QStringLiteral("file-label"), label}, {QStringLiteral("file-data"), file}}}};
}

/// The desktop's dock pins two applications that are there, one that moved and one that is gone.
void pinInDock(Program &program)
{
    FakePlatform &platform = program.platform;
    platform.appBundles.bundles[mailPath] = {QStringLiteral("org.example.mail"), QStringLiteral("Mail"), std::nullopt};
    platform.appBundles.listed = {{QStringLiteral("/Applications/Post.app"),
        {QStringLiteral("org.example.post"), QStringLiteral("Post"), std::nullopt}}};
    platform.files.missing = {gonePath, postPath};
    platform.preferences.domains[QStringLiteral("com.apple.dock")] = {{QStringLiteral("persistent-apps"),
        QVariantList{tile(QStringLiteral("Finder"), QStringLiteral("/Finder.app")),
            tile(QStringLiteral("Mail"), mailPath), tile(QStringLiteral("Gone"), gonePath),
            tile(QStringLiteral("Briefe"), postPath)}}};
}

template <typename Widget>
std::unique_ptr<Widget> make(WidgetKind kind, Services &services)
{
    auto widget = makeBarWidget(kind, services);
    return std::unique_ptr<Widget>(dynamic_cast<Widget *>(widget.release()));
}

} // namespace

class ApplicationsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theImportAddsWhatIsPinnedAndReports()
    {
        Program program(plan(RunMode::importDock));
        pinInDock(program);
        launch(program);
        QCOMPARE(program.printed,
            (QStringList{QStringLiteral("imported: Mail — /Applications/Mail.app"),
                QStringLiteral("imported: Post — /Applications/Post.app"), QStringLiteral("skipped (not found): Gone"),
                QStringLiteral("total pinned apps now: 3")}));
        QCOMPARE(program.terminations, 1);
    }

    void aSecondImportAddsNothing()
    {
        Program program(plan(RunMode::importDock));
        pinInDock(program);
        launch(program);
        program.printed.clear();
        launch(program);
        QCOMPARE(program.printed,
            (QStringList{QStringLiteral("skipped (not found): Gone"), QStringLiteral("total pinned apps now: 3")}));
    }

    void anImportOfNothingGivesTheTotalAlone()
    {
        Program program(plan(RunMode::importDock));
        launch(program);
        QCOMPARE(program.printed, QStringList{QStringLiteral("total pinned apps now: 1")});
        QCOMPARE(program.terminations, 1);
    }

    void anImportStartsNoService()
    {
        Program program(plan(RunMode::importDock));
        program.delegate.store().change([](Settings &settings) { settings.showAppBadges = true; });
        pinInDock(program);
        launch(program);
        program.platform.clock.advance(60s);
        QCOMPARE(program.platform.workspace.timesAsked, 0);
        QCOMPARE(program.platform.badgeSource.looks(), 0);
        QCOMPARE(program.platform.clock.runningTimers(), 0);
    }

    void badgesAreLookedForInANormalRunOnly_data()
    {
        QTest::addColumn<RunMode>("mode");
        QTest::addColumn<bool>("areLookedFor");
        QTest::newRow("normal") << RunMode::normal << true;
        QTest::newRow("preview") << RunMode::render << false;
    }

    void badgesAreLookedForInANormalRunOnly()
    {
        QFETCH(RunMode, mode);
        QFETCH(bool, areLookedFor);
        RunPlan run = plan(mode);
        run.previewPath = QStringLiteral("/nowhere/at/all.png");
        Program program(run);
        program.delegate.store().change([](Settings &settings) { settings.showAppBadges = true; });
        program.delegate.applicationDidFinishLaunching();
        QCOMPARE(program.platform.badgeSource.looks(), areLookedFor ? 1 : 0);
        QCOMPARE(program.platform.badgeSource.isActive, areLookedFor);
    }

    void aPreviewShowsWhatRunsToo()
    {
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = QStringLiteral("/nowhere/at/all.png");
        Program program(preview);
        program.delegate.applicationDidFinishLaunching();
        QVERIFY(program.platform.workspace.timesAsked > 0);
    }

    void theOrderOfUseIsKept()
    {
        Program program(plan(RunMode::normal));
        program.platform.appBundles.bundles[mailPath] = {QStringLiteral("org.example.mail"), {}, {}};
        launch(program);
        program.platform.workspace.bringForward(
            program.platform.workspace.launch(QStringLiteral("org.example.mail"), mailPath));
        QCOMPARE(program.platform.userDefaults.lists.value(QStringLiteral("recentAppOrder")),
            QStringList{QStringLiteral("org.example.mail")});
    }

    void wherePlatformsHaveNoWayOfTheirOwnTheBodyHas()
    {
        FakePlatform platform;
        FakeFileManager scripted;
        FakeBadgeSource dockTiles;
        QVERIFY(&fileManager(platform.ports, scripted) == &platform.fileManager);
        QVERIFY(&badgeSource(platform.ports, dockTiles) == &platform.badgeSource);
        platform.ports.fileManager.reset();
        platform.ports.badgeSource.reset();
        QVERIFY(&fileManager(platform.ports, scripted) == &scripted);
        QVERIFY(&badgeSource(platform.ports, dockTiles) == &dockTiles);
    }

    void theFileManagerComesForwardInThePlatformsWay()
    {
        FakePlatform platform;
        Services services(platform.ports, plan(RunMode::normal));
        services.launcher.launch(defaultShortcuts().first());
        QCOMPARE(platform.fileManager.timesForward, 1);
    }

    void aClickOnTheWeatherShowsTheForecastOfThePlace()
    {
        FakePlatform platform;
        Services services(platform.ports, plan(RunMode::normal));
        services.store.change([](Settings &settings) {
            settings.location.latitude = 48.25;
            settings.location.longitude = 11.5;
        });
        for (const auto kind : {WidgetKind::weather, WidgetKind::forecast}) {
            const auto widget = make<WeatherTile>(kind, services);
            QVERIFY(widget->isTouchable());
            widget->press();
        }
        const QUrl page(QStringLiteral("https://open-meteo.com/en/docs?latitude=48.25&longitude=11.5"));
        QCOMPARE(platform.workspace.addresses, (QList<QUrl>{page, page}));
    }

    void iconsAreDroppedOnceThoughTheSystemTellsTwoThings()
    {
        FakePlatform platform;
        Services services(platform.ports, plan(RunMode::normal));
        services.start();
        QSignalSpy dropped(&services.icons, &IconCache::iconsChanged);
        platform.appBundles.change();
        platform.icons.changeTheme();
        QCOMPARE(dropped.size(), 1);
    }

    void theForecastSaysWhatAClickOpens()
    {
        FakePlatform platform;
        Services services(platform.ports, plan(RunMode::normal));
        const auto forecast = make<ForecastWidget>(WidgetKind::forecast, services);
        QCOMPARE(forecast->helpText(), QStringLiteral("Open open-meteo.com"));
        const QString path = QStringLiteral("/usr/share/applications/kweather.app");
        platform.workspace.installed[QStringLiteral("com.apple.weather")] = path;
        platform.appBundles.bundles[path] = {std::nullopt, QStringLiteral("KWeather"), std::nullopt};
        platform.appBundles.change();
        QCOMPARE(forecast->helpText(), QStringLiteral("Open KWeather"));
        forecast->press();
        QCOMPARE(platform.workspace.openings.last().path, path);
    }
};

MOORLINE_TEST(ApplicationsTest);
#include "ApplicationsTest.moc"
