#include "app/AppDelegate.h"

#include "app/LiveSnapshot.h"
#include "app/PreviewRenderer.h"
#include "app/StatusItem.h"
#include "app/WeatherServers.h"
#include "dock/DockBarView.h"

namespace moorline {

namespace {

/// Time for what the widgets show to arrive.
constexpr std::chrono::seconds previewDelay{6};
constexpr std::chrono::seconds snapshotDelay{8};

} // namespace

AppDelegate::AppDelegate(Platform &platform, RunPlan plan, Outlets outlets)
    : m_platform(platform)
    , m_plan(std::move(plan))
    , m_outlets(std::move(outlets))
    , m_launcher(*platform.appBundles)
    , m_store(*platform.directories, platform.appBundles->applicationExtension(),
          [this](const QUrl &url) { return m_launcher.makeShortcut(url); })
    , m_scripts(*platform.clock)
    , m_scriptedDockControl(m_scripts)
    , m_systemDock(*platform.preferences, *platform.windowServer,
          platform.systemDockControl ? *platform.systemDockControl : m_scriptedDockControl, *platform.systemSettings)
    , m_spaceProbe(*platform.windowServer)
    , m_symbols(*platform.systemImages)
    , m_timeKeeper(*platform.clock)
    , m_locationService(*platform.locationManager, *platform.geocoder, *platform.clock)
    , m_weatherService({m_store, *platform.clock, *platform.httpClient, m_locationService,
          m_plan.weatherOrigin ? weatherEndpoints(*m_plan.weatherOrigin) : publicWeatherEndpoints(), m_plan.debug})
    , m_windowController({m_store, m_systemDock, m_spaceProbe, *platform.clock, *platform.screens, *platform.pointer,
                             *platform.windowServer, *platform.workspace, *platform.panelWindow, m_plan.debug},
          [this](std::function<void(qreal)> contentWidthChange) { return makeBar(std::move(contentWidthChange)); })
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::startServices()
{
    m_timeKeeper.start();
    // What could not be fetched while there was no network, or is hours old after a sleep, is worth asking for at once.
    connect(m_platform.network.get(), &Network::becameReachable, &m_weatherService, &WeatherService::refresh);
    connect(m_platform.power.get(), &Power::didWake, &m_weatherService, &WeatherService::refresh);
    connect(&m_locationService, &LocationService::authorizationGranted, &m_weatherService, &WeatherService::refresh);
    m_weatherService.start();
}

void AppDelegate::applicationDidFinishLaunching()
{
    switch (m_plan.mode) {
    case RunMode::render:
        runPreview();
        return;
    case RunMode::importDock:
        runImport();
        return;
    case RunMode::normal:
        runBar();
        return;
    }
}

void AppDelegate::runPreview()
{
    startServices();
    m_pictureTimer = m_platform.clock->after(previewDelay, [this] {
        PreviewRenderer([this] { return makeBar([](qreal) {}); }).render(*m_plan.previewPath);
        m_outlets.terminate();
    });
}

void AppDelegate::runImport()
{
    const ImportResult result = m_outlets.importFromSystemDock();
    for (const QString &line : importReport(result, m_store.settings().appShortcuts.size()))
        m_outlets.print(line);
    m_outlets.terminate();
}

void AppDelegate::runBar()
{
    startServices();
    m_windowController.show();
    m_statusItem = std::make_unique<StatusItem>(m_store, *m_platform.statusBar, m_symbols, commands());
    // Once the panel is painted: asking a tray that hangs for its place would hold everything up.
    m_statusTimer = m_platform.clock->after(std::chrono::milliseconds(0), [this] { m_statusItem->install(); });
    if (m_plan.snapshotPath)
        scheduleSnapshot();
}

void AppDelegate::scheduleSnapshot()
{
    m_pictureTimer = m_platform.clock->after(snapshotDelay, [this] {
        LiveSnapshot::capture(m_windowController.panel(), *m_plan.snapshotPath);
        m_outlets.terminate();
    });
}

BarCommands AppDelegate::commands() const
{
    // There is no settings window to open yet.
    return {.openSettings = nullptr, .quit = m_outlets.terminate};
}

std::unique_ptr<DockBarView> AppDelegate::makeBar(std::function<void(qreal)> contentWidthChange)
{
    return std::make_unique<DockBarView>(
        DockBarView::Context{m_store, m_timeKeeper, m_systemDock, *m_platform.clock, *m_platform.screens, m_symbols,
            m_weatherService, commands(), nullptr, nullptr},
        std::move(contentWidthChange));
}

} // namespace moorline
